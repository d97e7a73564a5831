#include "platform/linux/x11/X11Pointer.h"

#include "desktop/support/XClient.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11ScreenPixels.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <gtest/gtest.h>

namespace tapalong {

TEST(X11Pointer, FollowsThePointerToEveryCornerAsTheToolkitWould) {
    const X11Connection connection;
    ASSERT_TRUE(connection.isUsable());
    test::XClient hand;
    const auto screen = QGuiApplication::primaryScreen()->geometry();
    for (const QPoint place : {screen.topLeft(), screen.topRight(), screen.bottomLeft(), screen.bottomRight(),
                               screen.center(), QPoint(17, 4)}) {
        hand.movePointer(static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()));
        hand.sync();
        EXPECT_EQ(pointerPosition(connection, X11ScreenPixels(connection)), QPointF(place));
        EXPECT_EQ(QCursor::pos(), place);
    }
}

} // namespace tapalong
