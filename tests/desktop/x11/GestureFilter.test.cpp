#include "desktop/x11/X11EventTapsTest.h"

#include <QCoreApplication>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QWheelEvent>
#include <QWindow>

namespace tapalong {

namespace {

/// Counts the gestures that get as far as to a window of ours.
class GestureWindow : public QWindow {
public:
    int gestures = 0;

protected:
    bool event(QEvent* event) override {
        gestures += event->type() == QEvent::NativeGesture || event->type() == QEvent::Wheel ? 1 : 0;
        return QWindow::event(event);
    }
};

/// No X server that a test can start has a touchpad, so the events begin where Qt hands them to the window.
class GestureFilterTest : public test::X11EventTapsTest {
protected:
    void gesture(Qt::NativeGestureType type) {
        const QPointF middle(100, 100);
        QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, middle, middle, middle, 1, {});
        QCoreApplication::sendEvent(&window, &event);
    }

    void smoothScroll() {
        QWheelEvent event({100, 100}, {100, 100}, {0, 3}, {0, 8}, Qt::NoButton, Qt::NoModifier, Qt::ScrollUpdate,
                          false);
        QCoreApplication::sendEvent(&window, &event);
    }

    GestureWindow window;
};

} // namespace

TEST_F(GestureFilterTest, ConsumedGesturesReachTheTapAlone) {
    start();
    smoothScroll();
    gesture(Qt::ZoomNativeGesture);
    gesture(Qt::SmartZoomNativeGesture);
    gesture(Qt::RotateNativeGesture);
    gesture(Qt::SwipeNativeGesture);
    gesture(Qt::BeginNativeGesture);
    EXPECT_EQ(window.gestures, 0);
    const std::vector types = {EventType::scrollWheel, EventType::magnify, EventType::magnify,
                               EventType::rotate,      EventType::swipe,   EventType::gesture};
    ASSERT_EQ(events.size(), types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        EXPECT_EQ(events[i].type, types[i]) << i;
    }
}

TEST_F(GestureFilterTest, PassedGesturesGoOnToTheWindow) {
    verdict = Verdict::pass;
    start();
    smoothScroll();
    gesture(Qt::ZoomNativeGesture);
    EXPECT_EQ(events.size(), 2U);
    EXPECT_EQ(window.gestures, 2);
}

TEST_F(GestureFilterTest, WithoutATapGesturesAreTheWindows) {
    start();
    stop();
    smoothScroll();
    gesture(Qt::SwipeNativeGesture);
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(window.gestures, 2);
}

} // namespace tapalong
