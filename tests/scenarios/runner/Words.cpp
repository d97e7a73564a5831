#include "scenarios/runner/Words.h"

#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <utility>

namespace tapalong::testing {

namespace {

constexpr std::string_view blanks = " \t";

char32_t scalarOf(std::string_view hex) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(hex.data(), hex.data() + hex.size(), value, 16);
    const bool scalar = value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    if (hex.empty() || error != std::errc{} || end != hex.data() + hex.size() || !scalar) {
        throw ScriptError("\\u{" + std::string(hex) + "} is no code point");
    }
    return static_cast<char32_t>(value);
}

/// Takes the escape that begins after a backslash at `position`, and moves `position` to its last character.
std::string escapeAt(std::string_view text, std::size_t& position) {
    const char kind = ++position < text.size() ? text[position] : '\0';
    switch (kind) {
    case 'n':
        return "\n";
    case 't':
        return "\t";
    case 'r':
        return "\r";
    case 's':
        return " ";
    case '\\':
    case '"':
        return {kind};
    case 'u': {
        const auto close = text.find('}', position);
        if (position + 1 >= text.size() || text[position + 1] != '{' || close == std::string_view::npos) {
            break;
        }
        const auto scalar = scalarOf(text.substr(position + 2, close - position - 2));
        position = close;
        return encoded(scalar);
    }
    default:
        break;
    }
    throw ScriptError("unknown escape in " + std::string(text));
}

} // namespace

std::vector<Line> readLines(const std::filesystem::path& file) {
    std::vector<Line> lines;
    std::ifstream stream(file);
    std::string raw;
    for (int number = 1; std::getline(stream, raw); ++number) {
        const auto text = trimmedBlanks(raw);
        if (!text.empty() && text != "#" && !text.starts_with("# ")) {
            lines.push_back({file.filename().string() + ":" + std::to_string(number), std::string(text)});
        }
    }
    return lines;
}

std::string_view trimmedBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string unescaped(std::string_view text) {
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        text = text.substr(1, text.size() - 2);
    }
    std::string plain;
    for (std::size_t position = 0; position < text.size(); ++position) {
        if (text[position] == '\\') {
            plain += escapeAt(text, position);
        } else {
            plain += text[position];
        }
    }
    return plain;
}

std::string escaped(std::string_view text) {
    std::string shown;
    for (const char c : text) {
        switch (c) {
        case '\n':
            shown += "\\n";
            break;
        case '\t':
            shown += "\\t";
            break;
        case '\r':
            shown += "\\r";
            break;
        case '\\':
            shown += "\\\\";
            break;
        default:
            shown += c;
        }
    }
    const bool blankAtAnEnd = !shown.empty() && (shown.front() == ' ' || shown.back() == ' ');
    return blankAtAnEnd ? '"' + shown + '"' : shown;
}

double toNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc{} || end != text.data() + text.size() || !std::isfinite(value)) {
        throw ScriptError("\"" + std::string(text) + "\" is no number");
    }
    return value;
}

Words::Words(std::string_view text) : m_text(text) {
    std::size_t position = 0;
    while ((position = m_text.find_first_not_of(blanks, position)) != std::string::npos) {
        const auto end = std::min(m_text.find_first_of(blanks, position), m_text.size());
        m_starts.push_back(position);
        m_words.push_back(m_text.substr(position, end - position));
        position = end;
    }
}

std::string Words::next(std::string_view what) {
    if (atEnd()) {
        throw ScriptError("\"" + m_text + "\" lacks " + std::string(what));
    }
    return m_words[m_next++];
}

std::string Words::nextOr(std::string_view otherwise) {
    return atEnd() ? std::string(otherwise) : m_words[m_next++];
}

double Words::nextNumber(std::string_view what) {
    return toNumber(next(what));
}

std::size_t Words::nextCount(std::string_view what) {
    const double value = nextNumber(what);
    if (value < 0 || value != std::floor(value)) {
        throw ScriptError(std::string(what) + " must be a whole number");
    }
    return static_cast<std::size_t>(value);
}

bool Words::nextEither(std::string_view first, std::string_view second) {
    const auto word = next(std::string(first) + " or " + std::string(second));
    if (word != first && word != second) {
        throw ScriptError("\"" + word + "\" must be " + std::string(first) + " or " + std::string(second));
    }
    return word == first;
}

void Words::skip(std::string_view word) {
    if (const auto found = next(word); found != word) {
        throw ScriptError("\"" + found + "\" must be " + std::string(word));
    }
}

std::string Words::rest() {
    if (atEnd()) {
        return {};
    }
    const auto start = m_starts[std::exchange(m_next, m_words.size())];
    return std::string(trimmedBlanks(std::string_view(m_text).substr(start)));
}

void Words::mustEnd() const {
    if (!atEnd()) {
        throw ScriptError("\"" + m_words[m_next] + "\" is one word too many in \"" + m_text + "\"");
    }
}

} // namespace tapalong::testing
