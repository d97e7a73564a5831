#pragma once

#include "base/Observable.h"
#include "platform/Windows.h"

#include <functional>
#include <memory>

class QObject;
class QQuickView;

namespace tapalong {

/// What the views need to know of the desktop. Everything referred to outlives the views.
struct ViewEnvironment {
    ObservableObject* appearance = nullptr; ///< announces that the desktop turns dark or light; may be null
    std::function<bool()> isDark;
    /// The exit overlay's password field that has the keyboard focus, or null once it has lost it. May be empty.
    std::function<void(QObject* fieldOrNull)> secureFieldFocused;
};

using ViewFactory = std::function<void(QQuickView&, const std::shared_ptr<HostedView>&)>;

/// Fills a window with the QML that belongs to a view. The window owns what is made and keeps the view alive. A view
/// of an unknown type, and QML that does not load, stop the program. An exit that succeeds takes its window down while
/// one of that window's events is being delivered: whoever owns the window must use deleteLater().
[[nodiscard]] ViewFactory makeViewFactory(ViewEnvironment environment);

} // namespace tapalong
