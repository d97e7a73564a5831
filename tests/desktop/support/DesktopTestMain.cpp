#include "desktop/support/DisplayServer.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

#include <cstdlib>

// Every test program has a display of its own: grabs of one would make another fail.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    const tapalong::test::DisplayServer server;
    setenv("DISPLAY", server.display().c_str(), 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    unsetenv("WAYLAND_DISPLAY");
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
