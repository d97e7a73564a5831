#pragma once

#include "base/Observable.h"
#include "platform/Platform.h"
#include "platform/Timers.h"
#include "session/TypedCharacter.h"
#include "settings/Color.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tapalong {

/// The typed characters as one flowing, wrapping paragraph with a blinking cursor at its end. Holds the blink; what
/// the paragraph consists of is a pure function. Held by shared pointer.
class WrappingHStack final : public ObservableObject, public std::enable_shared_from_this<WrappingHStack> {
public:
    enum class Weight : std::uint8_t { regular, medium };
    enum class Design : std::uint8_t { standard, rounded };

    struct Font {
        double size = 0; ///< points
        Weight weight = Weight::regular;
        Design design = Design::standard;

        bool operator==(const Font&) const = default;
    };

    /// A piece of text in one style. A line break carries none of its own.
    struct Run {
        std::string text;
        std::optional<Color> color{};
        double opacity = 1;
        std::optional<Font> font{};

        bool operator==(const Run&) const = default;
    };

    /// The cursor's glyph: a left three-eighths block, "▎".
    static constexpr std::string_view cursorGlyph = "\u258E";
    static constexpr double cursorOpacity = 0.8;

    explicit WrappingHStack(const Platform& platform);

    /// The runs from the first character to the cursor. The display builds this piecemeal; it must look the same.
    [[nodiscard]] static std::vector<Run> paragraph(const TypedContent& characters, double fontSize, bool showCursor,
                                                    bool cursorVisible);
    /// The style of a typed character, and of the cursor.
    [[nodiscard]] static Font font(double fontSize);
    /// Extra space between two lines, in points.
    [[nodiscard]] static double lineSpacing(double fontSize);

    /// Starts the blinking, whether or not there is a cursor to see.
    void onAppear();
    void onDisappear();

    [[nodiscard]] bool cursorVisible() const { return m_cursorVisible.get(); }

private:
    const Platform m_platform;
    Published<bool> m_cursorVisible{*this, true};
    std::optional<TimerToken> m_blinkTimer;
};

} // namespace tapalong
