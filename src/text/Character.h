#pragma once

#include <optional>
#include <source_location>
#include <string>
#include <string_view>

namespace tapalong {

/// What a reader takes for one character: an extended grapheme cluster, never empty, always valid UTF-8.
class Character {
public:
    /// The text's first character, none when it is empty. Pieces that are not UTF-8 read as U+FFFD.
    [[nodiscard]] static std::optional<Character> first(std::string_view utf8);

    /// Fatal unless the literal is exactly one character.
    explicit Character(const char* literal, std::source_location where = std::source_location::current());

    [[nodiscard]] const std::string& utf8() const { return m_utf8; }
    [[nodiscard]] char32_t firstScalar() const;

    /// Whether it may be shown, by its first scalar: no C0 control, no DEL, nothing that Unicode has displays ignore.
    /// C1 controls may.
    [[nodiscard]] bool isPrintable() const;

    /// "\n" and nothing else: no other control or separator breaks a typed line.
    [[nodiscard]] bool isLineBreak() const { return m_utf8 == "\n"; }

    /// Canonical equivalence: however composed, "é" is "é".
    friend bool operator==(const Character& a, const Character& b);

private:
    Character() = default;

    std::string m_utf8;
};

} // namespace tapalong
