#include "platform/desktop/QtScreens.h"

#include "platform/NotificationCenter.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>
#include <utility>

namespace tapalong {

namespace {

constexpr Point nowhere{-1e9, -1e9};

} // namespace

QtScreens::QtScreens(NotificationCenter& notices, Sources sources) : m_notices(notices), m_sources(std::move(sources)) {
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_watch, [this] {
        watchMainScreen();
        m_notices.post(screenParametersChangedNotification);
    });
    watchMainScreen();
}

void QtScreens::watchMainScreen() {
    QObject::disconnect(m_geometryChanges);
    if (const auto* const screen = QGuiApplication::primaryScreen()) {
        m_geometryChanges = QObject::connect(screen, &QScreen::geometryChanged, &m_watch,
                                             [this] { m_notices.post(screenParametersChangedNotification); });
    }
}

QScreen* QtScreens::mainScreen() {
    auto* const screen = QGuiApplication::primaryScreen();
    return screen != nullptr && !screen->geometry().isEmpty() ? screen : nullptr;
}

std::optional<Rect> QtScreens::mainScreenFrame() const {
    const auto* const screen = mainScreen();
    if (screen == nullptr) {
        return std::nullopt;
    }
    const QSizeF size = m_sources.size ? m_sources.size(*screen) : QSizeF(screen->size());
    return Rect{0, 0, size.width(), size.height()};
}

Point QtScreens::mouseLocation() const {
    const auto position = m_sources.pointer ? m_sources.pointer() : std::nullopt;
    if (!position) {
        return nowhere;
    }
    const auto* const screen = mainScreen();
    if (screen == nullptr) {
        return {position->x(), -position->y()};
    }
    const QPointF fromTop = *position - screen->geometry().topLeft();
    return {fromTop.x(), mainScreenFrame()->maxY() - fromTop.y()};
}

QRect QtScreens::toQt(const Rect& frame) {
    const auto* const screen = mainScreen();
    const QRectF area = screen != nullptr ? QRectF(screen->geometry()) : QRectF();
    return QRectF(area.left() + frame.minX(), area.bottom() - frame.maxY(), frame.width, frame.height).toRect();
}

bool QtScreens::isFrameOf(const QScreen& mainScreen, const Rect& frame) {
    const QSizeF size = mainScreen.size();
    return frame.x == 0 && frame.y == 0 && std::abs(frame.width - size.width()) < 1 &&
           std::abs(frame.height - size.height()) < 1;
}

} // namespace tapalong
