#pragma once

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Readers for the data files that the Unicode standard tests implementations with. Independent of the generator that
/// made the tables, so that a mistake there shows.
namespace tapalong::unicode_test_data {

struct File {
    std::string version;            // from the first line
    std::vector<std::string> lines; // without comments, blank lines and headings
};

/// Throws, which fails the test, when the file is missing.
inline File read(std::string_view name) {
    const std::string path = std::string(TAPALONG_UNICODE_TEST_DATA "/") + std::string(name);
    std::ifstream stream(path);
    if (!stream) {
        throw std::runtime_error(path + " is missing");
    }
    File file;
    std::string line;
    std::getline(stream, line);
    file.version = line.substr(line.find('-') + 1, line.rfind(".txt") - line.find('-') - 1);
    while (std::getline(stream, line)) {
        line.resize(std::min(line.find('#'), line.size()));
        line.resize(line.find_last_not_of(" \t") + 1);
        if (!line.empty() && !line.starts_with('@')) {
            file.lines.push_back(line);
        }
    }
    return file;
}

inline char32_t codePoint(const std::string& hexadecimal) {
    return static_cast<char32_t>(std::stoul(hexadecimal, nullptr, 16));
}

/// The scalars of "0061 200D".
inline std::u32string scalars(const std::string& field) {
    std::u32string found;
    std::istringstream stream(field);
    for (std::string word; stream >> word;) {
        found += codePoint(word);
    }
    return found;
}

/// For each code point whether the file gives it the property ("0009..000D ; White_Space").
inline std::vector<bool> codePointsWith(std::string_view property, const File& file) {
    std::vector<bool> has(0x110000, false);
    for (const std::string& line : file.lines) {
        std::istringstream stream(line);
        std::string range;
        std::string semicolon;
        std::string name;
        stream >> range >> semicolon >> name;
        if (name != property || !stream.eof()) {
            continue;
        }
        const auto dots = range.find("..");
        const char32_t last = codePoint(dots == std::string::npos ? range : range.substr(dots + 2));
        for (char32_t scalar = codePoint(range.substr(0, dots)); scalar <= last; ++scalar) {
            has[scalar] = true;
        }
    }
    return has;
}

} // namespace tapalong::unicode_test_data
