#include "desktop/support/EventLoop.h"
#include "desktop/support/XClient.h"
#include "platform/linux/x11/X11FocusKeeper.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

// Two fields, so that a key that leaves the first one would be seen.
constexpr const char* scene = R"(
import QtQuick
Window {
    property int entered: 0
    property alias field: password
    width: 400; height: 300; visible: true
    TextInput { id: password; objectName: "password"; focus: true; activeFocusOnTab: true
                echoMode: TextInput.Password; onAccepted: entered++ }
    TextInput { y: 50; activeFocusOnTab: true }
    Shortcut { sequence: "Ctrl+W"; onActivated: Qt.quit() }
}
)";

class PasswordFieldTest : public testing::Test {
protected:
    PasswordFieldTest() {
        test::setLayout("us");
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        QQmlComponent component(&engine);
        component.setData(scene, {});
        window.reset(qobject_cast<QQuickWindow*>(component.create()));
        field = window->findChild<QQuickItem*>("password");
        (void)spinUntil([&] { return window->isExposed(); });
        window->requestActivate();
        (void)spinUntil([&] { return field->hasActiveFocus() && QGuiApplication::focusObject() == field; });

        const auto tap = taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter,
                                        ~EventMask{0}, [this](const InputEvent& event) {
                                            tapped += event.text().value_or("");
                                            return Verdict::consume;
                                        });
        taps.addSource(taps.createRunLoopSource(tap.value()));
    }

    [[nodiscard]] std::string text() const { return field->property("text").toString().toStdString(); }

    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    QQuickItem* field = nullptr;
    X11Connection connection;
    SecureInput secureInput;
    X11EventMonitors monitors{connection};
    X11EventTaps taps{connection, monitors, secureInput};
    X11FocusKeeper focusKeeper{taps};
    test::XClient other;
    std::string tapped;
};

} // namespace

TEST_F(PasswordFieldTest, PasswordCanBeTypedCorrectedAndEnteredWhileATapHoldsTheKeyboard) {
    secureInput.setSecureField(field);
    other.tap(KEY_S);
    other.chord({KEY_LEFTSHIFT, KEY_E});
    other.tap(KEY_X);
    other.tap(KEY_BACKSPACE);
    other.tap(KEY_SPACE);
    other.tap(KEY_1);
    other.tap(KEY_HOME);
    other.tap(KEY_DELETE);
    other.tap(KEY_RIGHT);
    other.chord({KEY_LEFTSHIFT, KEY_1});
    other.tap(KEY_END);
    other.tap(KEY_LEFT);
    other.tap(KEY_2);
    other.tap(KEY_ENTER);
    ASSERT_TRUE(spinUntil([&] { return window->property("entered").toInt() == 1; })) << text() << " " << tapped;
    EXPECT_EQ(text(), "E! 21");
    EXPECT_EQ(tapped, "");
}

TEST_F(PasswordFieldTest, NoKeyLeavesTheField) {
    secureInput.setSecureField(field);
    other.tap(KEY_TAB);
    other.chord({KEY_LEFTSHIFT, KEY_TAB});
    other.chord({KEY_LEFTCTRL, KEY_W});
    other.tap(KEY_ESC);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return text() == "a"; }));
    EXPECT_TRUE(field->hasActiveFocus());
}

TEST_F(PasswordFieldTest, UnmaskedFieldGetsNothingAndTheTapEverything) {
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return tapped == "a"; }));
    spinFor(50ms);
    EXPECT_EQ(text(), "");
}

} // namespace tapalong
