#include "settings/Color.h"

#include "base/Fatal.h"
#include "text/WhiteSpace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace tapalong {

namespace {

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<unsigned>(c - 'a') + 10U;
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<unsigned>(c - 'A') + 10U;
    }
    return std::nullopt;
}

unsigned truncatedTo255ths(double component) {
    const double scaled = component * 255.0;
    constexpr double limit = 9223372036854775808.0; // 2^63, the first double past the 64-bit range
    verify(std::isfinite(scaled) && scaled >= -limit && scaled < limit,
           "a colour component must fit a 64-bit integer of 255ths");
    return static_cast<unsigned>(static_cast<std::int64_t>(scaled));
}

} // namespace

bool SrgbColor::isLight() const {
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue > 0.5;
}

std::optional<Color> Color::fromHex(std::string_view text) {
    std::string digits(trimmed(text));
    std::erase(digits, '#');
    if (digits.size() != 6) {
        return std::nullopt;
    }
    unsigned value = 0;
    for (const char c : digits) {
        const auto digit = hexDigit(c);
        if (!digit) {
            return std::nullopt;
        }
        value = value * 16U + *digit;
    }
    return Color(SrgbColor{static_cast<double>((value & 0xFF0000U) >> 16U) / 255.0,
                           static_cast<double>((value & 0xFF00U) >> 8U) / 255.0,
                           static_cast<double>(value & 0xFFU) / 255.0});
}

std::string Color::hexString() const {
    const auto components = srgb();
    if (!components) {
        return "#FFFFFF";
    }
    std::array<char, 32> text{};
    const int length = std::snprintf(text.data(), text.size(), "#%02X%02X%02X", truncatedTo255ths(components->red),
                                     truncatedTo255ths(components->green), truncatedTo255ths(components->blue));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::optional<SrgbColor> Color::srgb() const {
    if (const auto* components = std::get_if<SrgbColor>(&m_value)) {
        return *components;
    }
    switch (std::get<NamedColor>(m_value)) {
    case NamedColor::white:
        return SrgbColor{1, 1, 1};
    case NamedColor::black:
        return SrgbColor{0, 0, 0};
    case NamedColor::primary:
    case NamedColor::windowBackground:
        break;
    }
    return std::nullopt;
}

std::optional<NamedColor> Color::named() const {
    const auto* name = std::get_if<NamedColor>(&m_value);
    return name != nullptr ? std::optional(*name) : std::nullopt;
}

} // namespace tapalong
