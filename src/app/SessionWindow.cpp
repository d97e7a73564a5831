#include "app/SessionWindow.h"

namespace tapalong {

SessionWindow::SessionWindow(Rect contentRect, StyleMask style, BackingStore backing, bool defer,
                             const Platform& platform)
    : m_window(platform.windows.makeWindow(contentRect, style, backing, defer, *this)) {}

} // namespace tapalong
