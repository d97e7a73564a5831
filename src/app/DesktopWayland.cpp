#include "app/DesktopWayland.h"

#include "platform/desktop/NoticeBoard.h"
#include "platform/linux/wayland/QtKeyEvents.h"

#include <QScreen>

namespace tapalong {

DesktopWayland::DesktopWayland(NoticeBoard& notices) {
    notices.set("wayland.lockdown", "Lockdown Mode is not available on Wayland yet. Sessions work without it, and so "
                                    "do the desktop's own shortcuts.");
    notices.set("wayland.quickStart",
                "On Wayland the quick-start shortcut works only while a window of Tapalong has the keyboard.");
}

QSizeF DesktopWayland::sizeOf(const QScreen& screen) const {
    return screen.size();
}

void DesktopWayland::describeWindows(WindowTraits& traits) {
    traits.cover = Cover::fullScreen;
    traits.translateKey = [](const QKeyEvent& event) { return QtKeyEvents::translateAlone(event); };
}

} // namespace tapalong
