#include "text/Character.h"

#include "base/Fatal.h"
#include "text/GraphemeBreak.h"
#include "text/Normalization.h"
#include "text/UnicodeProperties.h"
#include "text/Utf8.h"

namespace tapalong {
namespace {

constexpr char32_t deleteControl = 0x7F;

std::string_view verifiedLiteral(const char* literal, std::source_location where) {
    verify(literal != nullptr, "a character is made from a literal", where);
    const std::string_view utf8 = literal;
    verify(!utf8.empty() && firstClusterLength(utf8) == utf8.size(), "a character's literal is exactly one character",
           where);
    return utf8;
}

} // namespace

std::optional<Character> Character::first(std::string_view utf8) {
    if (utf8.empty()) {
        return std::nullopt;
    }
    Character character;
    character.m_utf8 = repaired(utf8.substr(0, firstClusterLength(utf8)));
    return character;
}

Character::Character(const char* literal, std::source_location where)
    : m_utf8(repaired(verifiedLiteral(literal, where))) {}

char32_t Character::firstScalar() const {
    return decodeFirst(m_utf8).scalar;
}

bool Character::isPrintable() const {
    const char32_t scalar = firstScalar();
    return scalar >= U' ' && scalar != deleteControl && !isDefaultIgnorable(scalar);
}

bool operator==(const Character& a, const Character& b) {
    return canonicallyEqual(a.m_utf8, b.m_utf8);
}

} // namespace tapalong
