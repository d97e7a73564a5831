#pragma once

#include <cstdint>
#include <optional>

namespace tapalong {

using PresentationOptions = std::uint32_t;

/// What an application may ask of the desktop while it is in front. The numbers are the field's own.
namespace Presentation {
inline constexpr PresentationOptions none = 0;
inline constexpr PresentationOptions hideDock = 0x2;
inline constexpr PresentationOptions hideMenuBar = 0x8;
inline constexpr PresentationOptions disableAppleMenu = 0x10;
inline constexpr PresentationOptions disableProcessSwitching = 0x20;
inline constexpr PresentationOptions disableForceQuit = 0x40;
inline constexpr PresentationOptions disableSessionTermination = 0x80;
inline constexpr PresentationOptions disableHideApplication = 0x100;

/// What Lockdown Mode keeps in force: 0x1FA.
inline constexpr PresentationOptions lockdown = hideDock | hideMenuBar | disableProcessSwitching | disableForceQuit |
                                                disableSessionTermination | disableHideApplication | disableAppleMenu;
} // namespace Presentation

enum class Appearance : std::uint8_t { darkAqua, aqua };

/// This application as the desktop sees it.
class Application {
public:
    virtual ~Application() = default;

    /// One of our windows has the keyboard.
    [[nodiscard]] virtual bool isActive() const = 0;

    /// Brings this application to the front even while the user works in another one.
    virtual void activateIgnoringOtherApps() = 0;

    virtual void setPresentationOptions(PresentationOptions options) = 0;

    /// The better match of the dark and the light appearance; none when the desktop has neither.
    [[nodiscard]] virtual std::optional<Appearance> effectiveAppearance() const = 0;
};

} // namespace tapalong
