#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tapalong::testing {

/// A script that cannot be understood: an unknown word, a missing value, a malformed number.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One line of a script, without blanks around it.
struct Line {
    std::string where; ///< as in "input:3"
    std::string text;
};

/// The lines that say something: neither empty nor a comment (a "#" followed by a blank). No lines when the file is
/// not there.
[[nodiscard]] std::vector<Line> readLines(const std::filesystem::path& file);

[[nodiscard]] std::string_view trimmedBlanks(std::string_view text);
/// Replaces \n, \t, \r, \s (a blank), \\, \" and \u{hex}; a text in quotation marks loses them.
[[nodiscard]] std::string unescaped(std::string_view text);
/// The other way, for showing a text in one line.
[[nodiscard]] std::string escaped(std::string_view text);
[[nodiscard]] double toNumber(std::string_view text);

/// The words of a command, taken one after the other.
class Words {
public:
    explicit Words(std::string_view text);

    [[nodiscard]] bool atEnd() const { return m_next == m_words.size(); }
    /// Throws where there is none; `what` names it in the message.
    [[nodiscard]] std::string next(std::string_view what);
    [[nodiscard]] std::string nextOr(std::string_view otherwise);
    [[nodiscard]] double nextNumber(std::string_view what);
    /// A whole number that is not negative.
    [[nodiscard]] std::size_t nextCount(std::string_view what);
    /// A word that must be one of two; true for the first.
    [[nodiscard]] bool nextEither(std::string_view first, std::string_view second);
    /// Takes a word that must be this one.
    void skip(std::string_view word);
    /// All that is left, blanks within it included.
    [[nodiscard]] std::string rest();
    /// Throws when words are left.
    void mustEnd() const;

private:
    std::string m_text;
    std::vector<std::string> m_words;
    std::vector<std::size_t> m_starts; ///< where each word begins in m_text
    std::size_t m_next = 0;
};

} // namespace tapalong::testing
