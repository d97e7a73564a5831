#include "platform/linux/x11/GestureFilter.h"

#include <QCoreApplication>
#include <QNativeGestureEvent>
#include <QWindow>

#include <utility>

namespace tapalong {

namespace {

EventType typeOf(Qt::NativeGestureType gesture) {
    switch (gesture) {
    case Qt::ZoomNativeGesture:
    case Qt::SmartZoomNativeGesture:
        return EventType::magnify;
    case Qt::RotateNativeGesture:
        return EventType::rotate;
    case Qt::SwipeNativeGesture:
        return EventType::swipe;
    default:
        return EventType::gesture;
    }
}

} // namespace

GestureFilter::GestureFilter(std::function<Verdict(const InputEvent&)> offer) : m_offer(std::move(offer)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool GestureFilter::eventFilter(QObject* watched, QEvent* event) {
    // Only as a window gets it: what it hands on inside is the same event again.
    if (qobject_cast<QWindow*>(watched) == nullptr) {
        return false;
    }
    if (event->type() == QEvent::Wheel) {
        return m_offer({.type = EventType::scrollWheel}) == Verdict::consume;
    }
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        return m_offer({.type = typeOf(gesture->gestureType())}) == Verdict::consume;
    }
    return false;
}

} // namespace tapalong
