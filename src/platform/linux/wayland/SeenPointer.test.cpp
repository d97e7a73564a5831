#include "platform/linux/wayland/SeenPointer.h"

#include "platform/desktop/DesktopTest.test.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QWindow>

namespace tapalong {

namespace {

class SeenPointerTest : public DesktopTest {
protected:
    void moveTo(QPointF global) {
        QMouseEvent event(QEvent::MouseMove, global, global, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &event);
    }

    QWindow window;
    SeenPointer pointer;
};

TEST_F(SeenPointerTest, PointerNeverSeenIsNowhere) {
    EXPECT_EQ(pointer.position(), std::nullopt);
}

TEST_F(SeenPointerTest, PointerIsWhereItCameInOrMovedTo) {
    QEnterEvent entered({5, 5}, {5, 5}, {5, 5});
    QCoreApplication::sendEvent(&window, &entered);
    EXPECT_EQ(pointer.position(), QPointF(5, 5));
    moveTo({700.5, 1});
    EXPECT_EQ(pointer.position(), QPointF(700.5, 1));
}

TEST_F(SeenPointerTest, PointerThatLeftIsNowhere) {
    moveTo({0, 0});
    QEvent left(QEvent::Leave);
    QCoreApplication::sendEvent(&window, &left);
    EXPECT_EQ(pointer.position(), std::nullopt);
}

} // namespace

} // namespace tapalong
