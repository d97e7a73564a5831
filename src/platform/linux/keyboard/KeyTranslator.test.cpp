#include "platform/linux/keyboard/KeyTranslatorFixture.test.h"

#include <linux/input-event-codes.h>

#include <string>
#include <utility>
#include <vector>

namespace tapalong {

using test::KeyTranslatorTest;

TEST_F(KeyTranslatorTest, TextFollowsTheLayoutAndTheCodeDoesNot) {
    const std::vector<std::pair<const char*, const char*>> textOfTheKeyRightOfT = {
        {"us", "y"}, {"de", "z"}, {"fr", "y"}, {"ru", "н"}, {"gr", "υ"}, {"ara", "غ"}, {"il", "ט"}};
    for (const auto& [layout, text] : textOfTheKeyRightOfT) {
        use(layout);
        const auto key = tap(KEY_Y);
        EXPECT_EQ(key.event->text(), text) << layout;
        EXPECT_EQ(key.event->keyCode, 16) << layout;
    }
}

TEST_F(KeyTranslatorTest, WithoutAKeymapCodesAreRightAndThereIsNoText) {
    const auto key = press(KEY_A);
    EXPECT_EQ(key.event->keyCode, 0);
    EXPECT_EQ(key.event->text(), std::nullopt);
    EXPECT_EQ(press(KEY_LEFTSHIFT).event->type, EventType::flagsChanged);
}

TEST_F(KeyTranslatorTest, ShiftAndAltGrChooseTheLevel) {
    use("de");
    EXPECT_EQ(typedWith(KEY_LEFTSHIFT, KEY_2), "\"");
    EXPECT_EQ(typedWith(KEY_RIGHTALT, KEY_Q), "@");
    EXPECT_EQ(typedWith(KEY_RIGHTALT, KEY_E), "€");
    EXPECT_EQ(typed(KEY_102ND), "<");
    use("fr");
    EXPECT_EQ(typed(KEY_2), "é");
    EXPECT_EQ(typedWith(KEY_RIGHTSHIFT, KEY_2), "2");
}

TEST_F(KeyTranslatorTest, AltGrCountsAsOptionButMakesNoChord) {
    use("de");
    EXPECT_EQ(flagsAfterPress(KEY_RIGHTALT), Modifier::option);
    EXPECT_FALSE(press(KEY_Q).isChord);
    (void)release(KEY_RIGHTALT);
    (void)press(KEY_LEFTALT);
    EXPECT_TRUE(press(KEY_W).isChord);
}

TEST_F(KeyTranslatorTest, ModifierFlagsAreThoseAfterTheKey) {
    use("us");
    EXPECT_EQ(flagsAfterPress(KEY_LEFTCTRL), Modifier::control);
    EXPECT_EQ(flagsAfterPress(KEY_LEFTALT), Modifier::control | Modifier::option);
    EXPECT_EQ(flagsAfterPress(KEY_LEFTMETA), Modifier::control | Modifier::option | Modifier::command);
    EXPECT_EQ(press(KEY_T).event->modifierFlags, 0x1C0000U);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTCTRL), Modifier::option | Modifier::command);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTMETA), Modifier::option);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTALT), 0U);
}

TEST_F(KeyTranslatorTest, OneOfTwoShiftsReleasedLeavesShiftDown) {
    use("us");
    (void)press(KEY_LEFTSHIFT);
    (void)press(KEY_RIGHTSHIFT);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTSHIFT), Modifier::shift);
    EXPECT_EQ(flagsAfterRelease(KEY_RIGHTSHIFT), 0U);
}

TEST_F(KeyTranslatorTest, CapsLockReportsEachChangeOfItsLockOnce) {
    use("us");
    EXPECT_EQ(flagsAfterPress(KEY_CAPSLOCK), Modifier::capsLock);
    EXPECT_FALSE(release(KEY_CAPSLOCK).event.has_value());
    EXPECT_EQ(typed(KEY_A), "A");
    EXPECT_FALSE(press(KEY_CAPSLOCK).event.has_value());
    EXPECT_EQ(flagsAfterRelease(KEY_CAPSLOCK), 0U);
    EXPECT_EQ(typed(KEY_A), "a");
}

TEST_F(KeyTranslatorTest, CapsLockAsControlIsAControlKey) {
    use("us", "", "ctrl:nocaps");
    EXPECT_EQ(flagsAfterPress(KEY_CAPSLOCK), Modifier::control);
    EXPECT_EQ(flagsAfterRelease(KEY_CAPSLOCK), 0U);
}

TEST_F(KeyTranslatorTest, CapsLockAsEscapeIsAnOrdinaryKey) {
    use("us", "", "caps:escape");
    EXPECT_EQ(press(KEY_CAPSLOCK).event->type, EventType::keyDown);
    EXPECT_EQ(release(KEY_CAPSLOCK).event->type, EventType::keyUp);
}

TEST_F(KeyTranslatorTest, ControlChordsTypeControlCharacters) {
    use("us");
    EXPECT_EQ(typedWith(KEY_LEFTCTRL, KEY_A), "\x01");
    EXPECT_EQ(typedWith(KEY_LEFTCTRL, KEY_Z), "\x1a");
    EXPECT_EQ(typedWith(KEY_LEFTCTRL, KEY_SPACE), std::string(1, '\0'));
    use("ru,us");
    EXPECT_EQ(typedWith(KEY_LEFTCTRL, KEY_A), "\x01");
}

TEST_F(KeyTranslatorTest, SuperAndAltChordsKeepTheText) {
    use("us");
    EXPECT_EQ(typedWith(KEY_LEFTMETA, KEY_A), "a");
    EXPECT_EQ(typedWith(KEY_LEFTALT, KEY_A), "a");
}

TEST_F(KeyTranslatorTest, KeysThatTypeNothingHaveNoText) {
    use("us");
    for (const std::uint32_t code : {KEY_PAGEDOWN, KEY_PAGEUP, KEY_HOME, KEY_END, KEY_INSERT, KEY_NUMLOCK, KEY_COMPOSE,
                                     KEY_F1, KEY_F20, KEY_UP, KEY_SYSRQ, KEY_PAUSE, KEY_MUHENKAN}) {
        const auto key = tap(code);
        EXPECT_EQ(key.event->type, EventType::keyDown) << code;
        EXPECT_EQ(key.event->text(), std::nullopt) << code;
    }
}

TEST_F(KeyTranslatorTest, KeypadTypesDigitsWithNumLockAndKeepsItsCodes) {
    use("us");
    EXPECT_EQ(typed(KEY_KP7), std::nullopt);
    (void)tap(KEY_NUMLOCK);
    const auto key = tap(KEY_KP7);
    EXPECT_EQ(key.event->text(), "7");
    EXPECT_EQ(key.event->keyCode, 89);
    EXPECT_EQ(key.event->modifierFlags, Modifier::numericPad);
}

TEST_F(KeyTranslatorTest, FunctionAndArrowKeysCarryTheirOwnBits) {
    use("us");
    EXPECT_EQ(press(KEY_F5).event->modifierFlags, Modifier::function);
    EXPECT_EQ(press(KEY_LEFT).event->modifierFlags, Modifier::function | Modifier::numericPad);
    EXPECT_EQ(release(KEY_LEFT).event->modifierFlags, Modifier::function | Modifier::numericPad);
}

TEST_F(KeyTranslatorTest, MediaKeysAreSystemDefinedWithoutText) {
    use("us");
    for (const std::uint32_t code : {KEY_MUTE, KEY_VOLUMEUP, KEY_PLAYPAUSE, KEY_BRIGHTNESSUP, KEY_POWER}) {
        const auto key = tap(code);
        EXPECT_EQ(key.event->type, EventType::systemDefined) << code;
        EXPECT_EQ(key.event->text(), std::nullopt) << code;
    }
}

TEST_F(KeyTranslatorTest, DeadKeyTypesOnlyWithItsLetter) {
    use("us", "intl");
    EXPECT_EQ(typed(KEY_APOSTROPHE), std::nullopt);
    EXPECT_EQ(typed(KEY_E), "é");
    EXPECT_EQ(typed(KEY_E), "e");
    EXPECT_EQ(typed(KEY_APOSTROPHE), std::nullopt);
    EXPECT_EQ(typed(KEY_SPACE), "'");
    use("de");
    EXPECT_EQ(typed(KEY_GRAVE), std::nullopt);
    EXPECT_EQ(typed(KEY_O), "ô");
}

TEST_F(KeyTranslatorTest, ShiftWithinADeadSequenceDoesNotEndIt) {
    use("us", "intl");
    (void)typedWith(KEY_LEFTSHIFT, KEY_APOSTROPHE);
    EXPECT_EQ(typedWith(KEY_LEFTSHIFT, KEY_U), "Ü");
}

TEST_F(KeyTranslatorTest, LetterThatDoesNotContinueADeadKeyTypesItself) {
    use("us", "intl");
    (void)tap(KEY_GRAVE);
    EXPECT_EQ(typed(KEY_B), "b");
    EXPECT_EQ(typed(KEY_A), "a");
}

TEST_F(KeyTranslatorTest, HeldDeadKeyStaysOneDeadKey) {
    use("us", "intl");
    (void)press(KEY_APOSTROPHE);
    EXPECT_EQ(translator.translate(KEY_APOSTROPHE, KeyAction::repeat).event->text(), std::nullopt);
    EXPECT_EQ(translator.translate(KEY_APOSTROPHE, KeyAction::repeat).event->text(), std::nullopt);
    EXPECT_EQ(typed(KEY_E), "é");
}

TEST_F(KeyTranslatorTest, ComposeKeySequenceTypesOnItsLastKey) {
    use("us", "", "compose:ralt");
    EXPECT_EQ(typed(KEY_RIGHTALT), std::nullopt);
    EXPECT_EQ(typed(KEY_O), std::nullopt);
    EXPECT_EQ(typed(KEY_C), "©");
}

TEST_F(KeyTranslatorTest, RepetitionIsAKeyDownWithTheText) {
    use("us");
    (void)press(KEY_A);
    EXPECT_TRUE(translator.isHeld(KEY_A));
    const auto again = translator.translate(KEY_A, KeyAction::repeat);
    EXPECT_EQ(again.event->type, EventType::keyDown);
    EXPECT_EQ(again.event->text(), "a");
    EXPECT_EQ(release(KEY_A).event->type, EventType::keyUp);
    EXPECT_FALSE(translator.isHeld(KEY_A));
}

TEST_F(KeyTranslatorTest, TextOfAnEventStaysWhatItWasWhenTheLayoutChanges) {
    use("us,ru");
    const auto key = tap(KEY_Q);
    translator.synchronize({.lockedGroup = 1});
    EXPECT_EQ(key.event->text(), "q");
    EXPECT_EQ(typed(KEY_Q), "й");
    use("de");
    EXPECT_EQ(key.event->text(), "q");
}

TEST_F(KeyTranslatorTest, LayoutSwitchedByAKeyIsFollowed) {
    use("us,gr,ara", "", "grp:menu_toggle");
    EXPECT_EQ(typed(KEY_A), "a");
    (void)tap(KEY_COMPOSE);
    EXPECT_EQ(typed(KEY_A), "α");
    (void)tap(KEY_COMPOSE);
    EXPECT_EQ(typed(KEY_A), "ش");
    (void)tap(KEY_COMPOSE);
    EXPECT_EQ(typed(KEY_A), "a");
}

TEST_F(KeyTranslatorTest, ModifierPressedElsewhereIsKnownAndItsReleaseHereClearsIt) {
    use("us");
    translator.synchronize({.depressedMods = 1});
    EXPECT_EQ(typed(KEY_A), "A");
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTSHIFT), 0U);
}

TEST_F(KeyTranslatorTest, LockSetByAnotherProgramIsFollowed) {
    use("us");
    translator.synchronize({.lockedMods = 2});
    EXPECT_EQ(press(KEY_A).event->modifierFlags, Modifier::capsLock);
    translator.synchronize({});
    EXPECT_EQ(release(KEY_A).event->modifierFlags, 0U);
}

TEST_F(KeyTranslatorTest, AgreeingServerReportDisturbsNothing) {
    use("us");
    (void)press(KEY_LEFTSHIFT);
    translator.synchronize({.depressedMods = 1});
    (void)press(KEY_RIGHTSHIFT);
    EXPECT_EQ(flagsAfterRelease(KEY_RIGHTSHIFT), Modifier::shift);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTSHIFT), 0U);
}

TEST_F(KeyTranslatorTest, ForgottenKeysArePressesAgainAndEndASequence) {
    use("us", "intl");
    (void)press(KEY_A);
    (void)press(KEY_APOSTROPHE);
    translator.forgetHeldKeys();
    EXPECT_FALSE(translator.isHeld(KEY_A));
    EXPECT_EQ(typed(KEY_E), "e");
}

TEST_F(KeyTranslatorTest, KeymapChangeKeepsLockAndHeldModifiers) {
    use("us");
    (void)tap(KEY_CAPSLOCK);
    (void)press(KEY_LEFTCTRL);
    use("de");
    EXPECT_EQ(translator.flags(), Modifier::capsLock | Modifier::control);
    EXPECT_EQ(flagsAfterRelease(KEY_LEFTCTRL), Modifier::capsLock);
}

} // namespace tapalong
