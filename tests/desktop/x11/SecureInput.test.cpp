#include "platform/linux/x11/SecureInput.h"

#include "desktop/x11/OwnWindow.h"
#include "platform/linux/keyboard/VirtualKeyCodes.h"
#include "platform/linux/x11/X11FocusKeeper.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::OwnWindow;
using test::setLayout;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

class SecureInputTest : public testing::Test {
protected:
    SecureInputTest() {
        setLayout("us");
        const auto tap = taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter,
                                        ~EventMask{0}, [this](const InputEvent& event) {
                                            tapped.push_back(event.type);
                                            tappedText += event.text().value_or("");
                                            return Verdict::consume;
                                        });
        taps.addSource(taps.createRunLoopSource(tap.value()));
        (void)monitors.addLocalMonitorForEvents(~EventMask{0}, [this](const InputEvent& event) {
            locallySeen += event.text().value_or("");
            lastReleased = event.type == EventType::keyUp ? event.keyCode : lastReleased;
            const bool isShortcut = shortcut != 0 && (event.modifierFlags & shortcut) == shortcut;
            return isShortcut && event.type == EventType::keyDown ? Verdict::consume : localVerdict;
        });
    }

    void focusField() {
        window.fieldHasFocus = true;
        secureInput.setSecureField(&window.field);
    }

    /// Another keysym in the place of what the layout has.
    void bind(std::uint32_t kernelCode, xcb_keysym_t keysym) {
        xcb_change_keyboard_mapping(other.xcb(), 1, static_cast<xcb_keycode_t>(kernelCode + 8), 1, &keysym);
        other.sync();
    }

    void blurField() {
        window.fieldHasFocus = false;
        secureInput.setSecureField(nullptr);
    }

    /// Locks these modifiers and no other.
    void lock(std::uint8_t modifiers) {
        xcb_xkb_latch_lock_state(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, 0xFF, modifiers, 0, 0, 0, 0, 0);
        (void)own(xcb_get_input_focus_reply(connection.xcb(), xcb_get_input_focus(connection.xcb()), nullptr));
    }

    X11Connection connection;
    SecureInput secureInput;
    X11EventMonitors monitors{connection};
    X11EventTaps taps{connection, monitors, secureInput};
    X11FocusKeeper focusKeeper{taps};
    OwnWindow window;
    test::XClient other;
    std::vector<EventType> tapped;
    std::string tappedText;
    std::string locallySeen;
    std::int64_t lastReleased = 0; ///< that local monitors saw
    Verdict localVerdict = Verdict::pass;
    ModifierFlags shortcut = 0; ///< local monitors consume what is pressed with these; 0 for none
};

} // namespace

TEST_F(SecureInputTest, TypingGoesToLocalMonitorsAndTheFieldAndToNoTap) {
    focusField();
    other.tap(KEY_S);
    other.chord({KEY_LEFTSHIFT, KEY_E});
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "sE"; }));
    EXPECT_EQ(locallySeen, "sE");
    EXPECT_TRUE(tapped.empty());
    EXPECT_EQ(window.keyPresses, 0);
    EXPECT_EQ(window.field.keys, (std::vector<int>{Qt::Key_S, Qt::Key_E}));
}

TEST_F(SecureInputTest, KeyConsumedByALocalMonitorDoesNotReachTheField) {
    focusField();
    localVerdict = Verdict::consume;
    other.tap(KEY_S);
    ASSERT_TRUE(spinUntil([&] { return locallySeen == "s"; }));
    EXPECT_TRUE(window.field.keys.empty());
}

TEST_F(SecureInputTest, EditingKeysWork) {
    focusField();
    for (const std::uint32_t code :
         {KEY_BACKSPACE, KEY_DELETE, KEY_ENTER, KEY_KPENTER, KEY_LEFT, KEY_RIGHT, KEY_HOME, KEY_END}) {
        other.tap(code);
    }
    const std::vector<int> keys = {Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Return, Qt::Key_Enter,
                                   Qt::Key_Left,      Qt::Key_Right,  Qt::Key_Home,   Qt::Key_End};
    ASSERT_TRUE(spinUntil([&] { return window.field.keys == keys; }));
}

TEST_F(SecureInputTest, KeysThatWouldLeaveTheFieldDoNothing) {
    focusField();
    other.tap(KEY_TAB);
    other.chord({KEY_LEFTSHIFT, KEY_TAB});
    other.tap(KEY_ESC);
    other.chord({KEY_LEFTCTRL, KEY_A});
    other.chord({KEY_LEFTALT, KEY_U});
    other.chord({KEY_LEFTMETA, KEY_L});
    other.tap(KEY_F4);
    other.tap(KEY_X);
    ASSERT_TRUE(spinUntil([&] { return !window.field.keys.empty(); }));
    EXPECT_EQ(window.field.text, "x");
    EXPECT_TRUE(tapped.empty());
}

TEST_F(SecureInputTest, AltGrAndDeadKeysTypeIntoTheField) {
    setLayout("de");
    focusField();
    other.chord({KEY_RIGHTALT, KEY_Q});
    other.tap(KEY_EQUAL);
    other.tap(KEY_E);
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "@é"; }));
}

TEST_F(SecureInputTest, LockedControlLeavesTheTextAndAHeldOneMakesChords) {
    lock(XCB_MOD_MASK_CONTROL);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return tappedText == "\x01"; })) << "the tap gets keys as they are";
    focusField();
    other.tap(KEY_S);
    other.chord({KEY_LEFTCTRL, KEY_X});
    other.chord({KEY_LEFTSHIFT, KEY_E});
    other.tap(KEY_ENTER);
    const std::vector<int> keys = {Qt::Key_S, Qt::Key_E, Qt::Key_Return};
    EXPECT_TRUE(spinUntil([&] { return window.field.keys == keys; }));
    EXPECT_EQ(window.field.text, "sE\r");
    lock(0);
}

TEST_F(SecureInputTest, ShortcutOfALocalMonitorNeedsItsModifiersHeld) {
    shortcut = Modifier::control | Modifier::option | Modifier::command;
    lock(XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4 | XCB_MOD_MASK_LOCK);
    focusField();
    other.tap(KEY_T);
    other.chord({KEY_LEFTCTRL, KEY_LEFTALT, KEY_LEFTMETA, KEY_U});
    other.tap(KEY_I);
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "TI"; })) << window.field.text;
    EXPECT_EQ(locallySeen, "T\x15I");
    lock(0);
}

TEST_F(SecureInputTest, ShiftAndAltGrLockedBeforeAreDroppedAndThoseOfSinceCount) {
    setLayout("de");
    lock(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_5);
    focusField();
    other.tap(KEY_Q);
    other.chord({KEY_LEFTSHIFT, KEY_Q});
    other.chord({KEY_RIGHTALT, KEY_Q});
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "qQ@"; })) << window.field.text;
    lock(0);
    other.tap(KEY_Q);
    lock(XCB_MOD_MASK_SHIFT);
    other.tap(KEY_Q);
    lock(XCB_MOD_MASK_5);
    other.tap(KEY_Q);
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "qQ@qQ@"; })) << window.field.text;
    lock(0);
}

TEST_F(SecureInputTest, WhatWasLockedInOneFieldIsDroppedInTheNext) {
    focusField();
    other.tap(KEY_Q);
    lock(XCB_MOD_MASK_SHIFT);
    other.tap(KEY_Q);
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "qQ"; })) << window.field.text;
    blurField();
    focusField();
    other.tap(KEY_Q);
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "qQq"; })) << window.field.text;
    lock(0);
}

TEST_F(SecureInputTest, UnfinishedSequenceGoesNeitherIntoTheFieldNorOutOfIt) {
    setLayout("de");
    const auto accent = virtualKeyOf(KEY_EQUAL)->code;
    const auto accentIsThrough = [&] { return lastReleased == accent; };
    other.tap(KEY_EQUAL);
    ASSERT_TRUE(spinUntil([&] { return tapped.size() == 2; }));
    for (const char* text : {"e", "ee"}) { // the second field follows the first without a key between
        focusField();
        other.tap(KEY_E);
        ASSERT_TRUE(spinUntil([&] { return lastReleased != 0 && lastReleased != accent; }));
        EXPECT_EQ(window.field.text, text);
        other.tap(KEY_EQUAL);
        ASSERT_TRUE(spinUntil(accentIsThrough));
        blurField();
    }
    other.tap(KEY_E);
    EXPECT_TRUE(spinUntil([&] { return tappedText == "e"; })) << tappedText;
}

TEST_F(SecureInputTest, CharactersThatTheToolkitHoldsInTwoHalvesOrCallsNoPrintTypeToo) {
    focusField();
    bind(KEY_A, 0x0101F600);
    bind(KEY_B, 0x0100200C); // a letter of Persian words, between others
    other.tap(KEY_A);
    other.tap(KEY_B);
    EXPECT_TRUE(spinUntil([&] { return window.field.text == "\U0001F600\u200C"; })) << window.field.text;
    setLayout("us");
}

TEST_F(SecureInputTest, MediaKeysStillGoToTheTap) {
    focusField();
    other.tap(KEY_VOLUMEUP);
    ASSERT_TRUE(spinUntil([&] { return tapped.size() == 2; }));
    EXPECT_EQ(tapped, (std::vector{EventType::systemDefined, EventType::systemDefined}));
    EXPECT_TRUE(window.field.keys.empty());
}

TEST_F(SecureInputTest, WheelAndOtherButtonsDoNothing) {
    focusField();
    other.movePointer(600, 400);
    other.click(4);
    other.click(9);
    other.tap(KEY_S);
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "s"; }));
    EXPECT_TRUE(tapped.empty());
    EXPECT_EQ(window.wheels, 0);
    EXPECT_TRUE(window.clicks.empty());
}

TEST_F(SecureInputTest, KeyDownBeforeTheFieldHadTheFocusCountsWhenPressedAnew) {
    other.press(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return tappedText == "a"; }));
    focusField();
    spinFor(1000ms); // long enough for the server to repeat the key
    EXPECT_EQ(window.field.text, "");
    other.release(KEY_A);
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "a"; }));
}

TEST_F(SecureInputTest, EndsAtOnceWhenTheFieldLosesTheFocus) {
    focusField();
    other.tap(KEY_A);
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "a"; }));
    window.fieldHasFocus = false; // the view has not said so yet
    other.tap(KEY_B);
    ASSERT_TRUE(spinUntil([&] { return tappedText == "b"; }));
    EXPECT_EQ(window.field.text, "a");
}

TEST_F(SecureInputTest, AnotherProgramThatTakesTheFocusGetsNothingAndEndsNothing) {
    focusField();
    other.tap(KEY_A);
    const auto elsewhere = other.openWindow(0, 0, 50, 50);
    other.focus(elsewhere);
    other.tap(KEY_B);
    spinFor(300ms); // longer than the toolkit waits before it believes in a loss of focus
    other.tap(KEY_C);
    ASSERT_TRUE(spinUntil([&] { return window.field.text == "abc"; }));
    EXPECT_TRUE(tapped.empty());
    EXPECT_TRUE(other.seen().empty());
}

TEST_F(SecureInputTest, FieldThatDiesEndsIt) {
    auto field = std::make_unique<QObject>();
    secureInput.setSecureField(field.get());
    field.reset();
    EXPECT_FALSE(secureInput.isOn());
    other.tap(KEY_B);
    ASSERT_TRUE(spinUntil([&] { return tappedText == "b"; }));
}

TEST_F(SecureInputTest, WithoutFocusInTheFieldKeysGoToTheTap) {
    secureInput.setSecureField(&window.field);
    other.tap(KEY_B);
    ASSERT_TRUE(spinUntil([&] { return tappedText == "b"; }));
    EXPECT_EQ(locallySeen, "");
    blurField();
}

} // namespace tapalong
