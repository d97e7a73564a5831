#include "text/Utf8.h"

#include "base/Fatal.h"

namespace tapalong {
namespace {

constexpr char32_t lastCodePoint = 0x10FFFF;
constexpr unsigned payloadBits = 6; // of each byte after the first

bool isSurrogate(char32_t scalar) {
    return scalar >= 0xD800 && scalar <= 0xDFFF;
}

/// What a lead byte announces. The second byte's limits rule out overlong forms, surrogates and values above the last
/// code point, so that nothing needs checking afterwards.
struct Sequence {
    std::size_t length = 0; // 0: this byte leads nothing
    char32_t leadBits = 0;
    unsigned char secondLow = 0x80;
    unsigned char secondHigh = 0xBF;
};

Sequence sequenceLedBy(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) {
        return {.length = 2, .leadBits = lead & 0x1FU};
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const unsigned char low = lead == 0xE0 ? 0xA0 : 0x80;
        const unsigned char high = lead == 0xED ? 0x9F : 0xBF;
        return {.length = 3, .leadBits = lead & 0x0FU, .secondLow = low, .secondHigh = high};
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const unsigned char low = lead == 0xF0 ? 0x90 : 0x80;
        const unsigned char high = lead == 0xF4 ? 0x8F : 0xBF;
        return {.length = 4, .leadBits = lead & 0x07U, .secondLow = low, .secondHigh = high};
    }
    return {};
}

char trailingByte(char32_t scalar, unsigned bytesAfter) {
    return static_cast<char>(0x80U | ((scalar >> (payloadBits * bytesAfter)) & 0x3FU));
}

} // namespace

DecodedScalar decodeFirst(std::string_view utf8) {
    if (utf8.empty()) {
        return {};
    }
    const auto lead = static_cast<unsigned char>(utf8[0]);
    if (lead < 0x80) {
        return {lead, 1};
    }
    const Sequence sequence = sequenceLedBy(lead);
    if (sequence.length == 0) {
        return {replacementCharacter, 1};
    }
    char32_t scalar = sequence.leadBits;
    for (std::size_t i = 1; i < sequence.length; ++i) {
        if (i == utf8.size()) {
            return {replacementCharacter, i};
        }
        const auto byte = static_cast<unsigned char>(utf8[i]);
        const unsigned char low = i == 1 ? sequence.secondLow : 0x80;
        const unsigned char high = i == 1 ? sequence.secondHigh : 0xBF;
        if (byte < low || byte > high) {
            return {replacementCharacter, i};
        }
        scalar = (scalar << payloadBits) | (byte & 0x3FU);
    }
    return {scalar, sequence.length};
}

std::u32string decoded(std::string_view utf8) {
    std::u32string scalars;
    scalars.reserve(utf8.size());
    while (!utf8.empty()) {
        const DecodedScalar next = decodeFirst(utf8);
        scalars.push_back(next.scalar);
        utf8.remove_prefix(next.length);
    }
    return scalars;
}

std::string encoded(char32_t scalar) {
    verify(scalar <= lastCodePoint && !isSurrogate(scalar), "only Unicode scalar values are encoded");
    if (scalar < 0x80) {
        return {static_cast<char>(scalar)};
    }
    if (scalar < 0x800) {
        return {static_cast<char>(0xC0U | (scalar >> payloadBits)), trailingByte(scalar, 0)};
    }
    if (scalar < 0x10000) {
        return {static_cast<char>(0xE0U | (scalar >> (2 * payloadBits))), trailingByte(scalar, 1),
                trailingByte(scalar, 0)};
    }
    return {static_cast<char>(0xF0U | (scalar >> (3 * payloadBits))), trailingByte(scalar, 2), trailingByte(scalar, 1),
            trailingByte(scalar, 0)};
}

std::string repaired(std::string_view utf8) {
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const DecodedScalar next = decodeFirst(utf8);
        text += next.scalar == replacementCharacter ? encoded(replacementCharacter)
                                                    : std::string(utf8.substr(0, next.length));
        utf8.remove_prefix(next.length);
    }
    return text;
}

} // namespace tapalong
