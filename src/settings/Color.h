#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace tapalong {

/// Components in 0...1, gamma-encoded.
struct SrgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    /// Whether text on it should be dark: a luma above one half, of the components as they are (not linearised).
    [[nodiscard]] bool isLight() const;

    bool operator==(const SrgbColor&) const = default;
};

/// Colours that follow the desktop: what they look like is known when they are drawn.
enum class NamedColor : std::uint8_t { primary, white, black, windowBackground };

/// An sRGB colour or a named one. Typed characters keep named colours as they are, so that text typed before the
/// desktop turns dark is readable after it.
class Color {
public:
    Color(SrgbColor srgb) : m_value(srgb) {}    // NOLINT(google-explicit-constructor): a colour is either, plainly
    Color(NamedColor named) : m_value(named) {} // NOLINT(google-explicit-constructor)

    /// Six hexadecimal digits, "#" anywhere, white space around. None for anything else.
    [[nodiscard]] static std::optional<Color> fromHex(std::string_view text);

    /// "#" and the three components, each cut (not rounded) to a whole number of 255ths. "#FFFFFF" for a named
    /// colour that has no fixed components. A component that leaves the 64-bit range stops the program.
    [[nodiscard]] std::string hexString() const;

    /// The components, also of `white` and `black`; none for the colours that only the desktop knows.
    [[nodiscard]] std::optional<SrgbColor> srgb() const;
    /// None for a colour given by its components.
    [[nodiscard]] std::optional<NamedColor> named() const;

    bool operator==(const Color&) const = default;

private:
    std::variant<SrgbColor, NamedColor> m_value;
};

} // namespace tapalong
