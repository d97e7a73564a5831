#include "platform/desktop/QtApplication.h"

#include "platform/desktop/DesktopTest.test.h"
#include "platform/desktop/QtWindows.h"
#include "platform/desktop/StandIns.test.h"

#include <QEvent>
#include <QTimer>

namespace tapalong {

namespace {

class QtApplicationTest : public DesktopTest {
protected:
    LightDesktop m_appearance;
    QtWindows m_windows{WindowTraits{}};
    RecordingGuard m_guard;
    QtApplication m_application{m_windows, m_appearance, m_guard};
};

TEST_F(QtApplicationTest, TerminationIsGuardedWhileTheOptionsDisableIt) {
    m_application.setPresentationOptions(Presentation::lockdown);
    EXPECT_EQ(m_guard.calls, "hold ");
    m_application.setPresentationOptions(Presentation::none);
    EXPECT_EQ(m_guard.calls, "hold release ");
}

TEST_F(QtApplicationTest, HidingPanelsAloneGuardsNothing) {
    m_application.setPresentationOptions(Presentation::hideDock | Presentation::hideMenuBar);
    EXPECT_EQ(m_guard.calls, "release ");
}

TEST_F(QtApplicationTest, LogOutThatComesAboutEndsTheMainLoopAlthoughAWindowStaysOpen) {
    struct Responder final : WindowResponder {
        [[nodiscard]] bool canBecomeKey() const override { return true; }
        [[nodiscard]] bool canBecomeMain() const override { return true; }
        void keyDown(const InputEvent&) override {}
        void flagsChanged(const InputEvent&) override {}
    } responder;
    const auto window =
        m_windows.makeWindow({0, 0, 100, 100}, StyleMask::borderless, BackingStore::buffered, false, responder);
    window->orderFrontRegardless();
    // What the toolkit does when the session manager says that the end has come.
    QTimer::singleShot(0, qGuiApp, [] {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(qGuiApp, &quit);
    });
    QTimer::singleShot(10000, qGuiApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

} // namespace

} // namespace tapalong
