#pragma once

#include "platform/Geometry.h"
#include "platform/InputEvent.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tapalong {

/// The state behind a window's content. The desktop side finds out which view it is and draws it.
class HostedView {
public:
    virtual ~HostedView() = default;

    /// The window that holds the view came up.
    virtual void onAppear() = 0;
    /// The window was taken down; may be followed by another onAppear().
    virtual void onDisappear() = 0;
};

enum class StyleMask : std::uint32_t { borderless = 0 };
enum class BackingStore : std::uint32_t { buffered = 2 };

using CollectionBehavior = std::uint32_t;
namespace Collection {
inline constexpr CollectionBehavior canJoinAllSpaces = 0x1;
inline constexpr CollectionBehavior stationary = 0x10;
inline constexpr CollectionBehavior fullScreenPrimary = 0x80;
} // namespace Collection

/// Above panels and docks.
inline constexpr int screenSaverWindowLevel = 1000;

/// What a window asks of the object that stands for it in the core, which must outlive it.
class WindowResponder {
public:
    virtual ~WindowResponder() = default;

    [[nodiscard]] virtual bool canBecomeKey() const = 0;
    [[nodiscard]] virtual bool canBecomeMain() const = 0;
    /// A key event that nothing in the window took.
    virtual void keyDown(const InputEvent& event) = 0;
    virtual void flagsChanged(const InputEvent& event) = 0;
};

/// One top-level window. Frames are screen rectangles in points (see Geometry.h).
class Window {
public:
    virtual ~Window() = default;

    [[nodiscard]] virtual std::string title() const = 0;
    virtual void setContentView(std::shared_ptr<HostedView> view) = 0;
    virtual void setLevel(int level) = 0;
    virtual void setCollectionBehavior(CollectionBehavior behavior) = 0;
    /// An opaque window on black: nothing of the desktop shines through while content is not drawn yet.
    virtual void setOpaqueOnBlack() = 0;
    virtual void setIgnoresMouseEvents(bool ignores) = 0;
    virtual void setAcceptsMouseMovedEvents(bool accepts) = 0;
    virtual void setFrame(Rect frame, bool display) = 0;

    /// Shows the window, brings it to the front of our windows and gives it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;
    /// Brings it in front of other applications' windows of its level too, without activating us.
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
};

class Windows {
public:
    virtual ~Windows() = default;

    /// A window not shown yet. It leaves windows() when its last owner lets go of it.
    [[nodiscard]] virtual std::shared_ptr<Window> makeWindow(Rect contentRect, StyleMask style, BackingStore backing,
                                                             bool defer, WindowResponder& responder) = 0;

    /// Our windows, hidden ones included, oldest first.
    [[nodiscard]] virtual std::vector<std::shared_ptr<Window>> windows() const = 0;
};

/// A window that the application declares instead of making it: opened at launch, at most one instance.
/// Closing it only hides it.
struct Scene {
    std::string title;
    std::string identifier;
    std::shared_ptr<HostedView> content;
    double width = 0;     ///< points; fixed
    double minHeight = 0; ///< points; no maximum
    bool centred = false; ///< at the first showing
};

} // namespace tapalong
