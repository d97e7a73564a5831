#pragma once

#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QGuiApplication>

#include <functional>
#include <tuple>

namespace tapalong {

/// Runs a case inside an application of the toolkit that needs no display.
class DesktopTest : public ::testing::Test {
protected:
    DesktopTest() {
        static int argc = 1;
        static char name[] = "desktop_unit_tests";
        static char* argv[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_QUICK_BACKEND", "software");
        // Never destroyed: at the process's end the toolkit's own globals go first, and its devices would miss them.
        static const auto* const application = new QGuiApplication(argc, argv);
        std::ignore = application;
    }

    /// Turns the event loop until `holds` or ten seconds have passed; whether it holds then.
    static bool waitFor(const std::function<bool()>& holds) {
        const QDeadlineTimer limit(10000);
        while (!holds() && !limit.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 10);
        }
        return holds();
    }
};

} // namespace tapalong
