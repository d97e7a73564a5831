#include "platform/desktop/QtScreens.h"

#include <QGuiApplication>
#include <QRectF>
#include <QScreen>

#include <utility>

namespace tapalong {

namespace {

constexpr Point nowhere{-1e9, -1e9};

QRectF mainScreenInQt() {
    const auto* const screen = QtScreens::mainScreen();
    return screen != nullptr ? QRectF(screen->geometry()) : QRectF();
}

} // namespace

QtScreens::QtScreens(PointerSource pointer) : m_pointer(std::move(pointer)) {}

QScreen* QtScreens::mainScreen() {
    auto* const screen = QGuiApplication::primaryScreen();
    return screen != nullptr && !screen->geometry().isEmpty() ? screen : nullptr;
}

std::optional<Rect> QtScreens::mainScreenFrame() const {
    const auto screen = mainScreenInQt();
    if (screen.isEmpty()) {
        return std::nullopt;
    }
    return Rect{0, 0, screen.width(), screen.height()};
}

Point QtScreens::mouseLocation() const {
    const auto position = m_pointer();
    if (!position) {
        return nowhere;
    }
    const auto screen = mainScreenInQt();
    return {position->x() - screen.left(), screen.bottom() - position->y()};
}

QRect QtScreens::toQt(const Rect& frame) {
    const auto screen = mainScreenInQt();
    return QRectF(screen.left() + frame.minX(), screen.bottom() - frame.maxY(), frame.width, frame.height).toRect();
}

} // namespace tapalong
