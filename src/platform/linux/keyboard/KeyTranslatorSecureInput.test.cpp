#include "platform/linux/keyboard/KeyTranslatorFixture.test.h"

#include <linux/input-event-codes.h>

namespace tapalong {

namespace {

using test::KeyTranslatorTest;

constexpr std::uint32_t shift = 1;
constexpr std::uint32_t control = 4;
constexpr std::uint32_t alt = 8;
constexpr std::uint32_t super = 64;
constexpr std::uint32_t levelThree = 128;

} // namespace

TEST_F(KeyTranslatorTest, ModifierThatStayedOnMakesACommandButNotInAPassword) {
    for (const std::uint32_t mods : {control, alt, super, control | alt | super}) {
        for (const KeyboardState& state : {KeyboardState{.latchedMods = mods}, KeyboardState{.lockedMods = mods}}) {
            use("us", "intl");
            translator.synchronize(state);
            EXPECT_TRUE(tap(KEY_A).isChord) << mods;
            EXPECT_NE(translator.flags(), 0U) << mods;
            translator.synchronize({});
            translator.setSecureInput(true);
            translator.synchronize(state); // later than secure input, and all the same
            const auto key = tap(KEY_A);
            EXPECT_FALSE(key.isChord) << mods;
            EXPECT_EQ(key.text, "a") << mods;
            EXPECT_EQ(key.event->text(), "a") << mods;
            EXPECT_EQ(key.event->modifierFlags, 0U) << "a shortcut would take the key " << mods;
            (void)tap(KEY_APOSTROPHE);
            EXPECT_EQ(tap(KEY_E).text, "é") << mods;
            translator.setSecureInput(false);
            EXPECT_TRUE(tap(KEY_A).isChord) << mods;
            translator.synchronize({});
        }
    }
}

TEST_F(KeyTranslatorTest, HeldModifierMakesACommandEvenIfItIsLockedToo) {
    use("us");
    translator.setSecureInput(true);
    for (const std::uint32_t locked : {0U, control}) {
        translator.synchronize({.lockedMods = locked});
        EXPECT_EQ(flagsAfterPress(KEY_LEFTCTRL), Modifier::control);
        EXPECT_TRUE(tap(KEY_A).isChord);
        EXPECT_EQ(flagsAfterRelease(KEY_LEFTCTRL), 0U);
        EXPECT_FALSE(tap(KEY_A).isChord);
    }
}

TEST_F(KeyTranslatorTest, ModifierThatWentFromHeldToLatchedIsNotHeld) {
    use("us");
    translator.setSecureInput(true);
    translator.synchronize({.depressedMods = control});
    EXPECT_TRUE(tap(KEY_A).isChord);
    translator.synchronize({.latchedMods = control});
    EXPECT_FALSE(tap(KEY_A).isChord);
}

TEST_F(KeyTranslatorTest, ShiftAndLevelsThatStayedOnFromBeforeAPasswordAreNotInIt) {
    use("de");
    const std::uint32_t both = shift | levelThree;
    for (const std::uint32_t mods : {shift, levelThree, both}) {
        for (const KeyboardState& state : {KeyboardState{.latchedMods = mods}, KeyboardState{.lockedMods = mods}}) {
            translator.synchronize(state);
            EXPECT_NE(tap(KEY_Q).text, "q") << mods;
            translator.setSecureInput(true);
            const auto key = tap(KEY_Q);
            EXPECT_EQ(key.text, "q") << mods;
            EXPECT_EQ(key.event->modifierFlags, 0U) << mods;
            EXPECT_EQ(typedWith(KEY_LEFTSHIFT, KEY_Q), "Q") << mods;
            EXPECT_EQ(typedWith(KEY_RIGHTALT, KEY_Q), "@") << mods;
            translator.setSecureInput(false);
            translator.synchronize({});
        }
    }
}

TEST_F(KeyTranslatorTest, ShiftAndLevelsThatWereTurnedOnInAPasswordAreInIt) {
    use("de");
    for (const std::uint32_t before : {0U, shift | levelThree}) {
        translator.synchronize({.lockedMods = before});
        translator.setSecureInput(true);
        (void)tap(KEY_A);
        translator.synchronize({});
        EXPECT_EQ(typed(KEY_Q), "q");
        translator.synchronize({.latchedMods = shift});
        EXPECT_EQ(typed(KEY_Q), "Q");
        translator.synchronize({.lockedMods = levelThree});
        EXPECT_EQ(typed(KEY_Q), "@");
    }
}

TEST_F(KeyTranslatorTest, CapsLockOfBeforeIsInAPasswordButAShiftLockIsNot) {
    use("us");
    (void)tap(KEY_CAPSLOCK);
    translator.setSecureInput(true);
    EXPECT_EQ(typed(KEY_A), "A");
    EXPECT_EQ(translator.flags(), Modifier::capsLock);
    use("us", "", "caps:shiftlock");
    translator.synchronize({});
    translator.setSecureInput(false);
    (void)tap(KEY_CAPSLOCK);
    EXPECT_EQ(typed(KEY_A), "A");
    translator.setSecureInput(true);
    EXPECT_EQ(typed(KEY_A), "a");
    (void)tap(KEY_CAPSLOCK);
    EXPECT_EQ(typed(KEY_A), "a");
    (void)tap(KEY_CAPSLOCK);
    EXPECT_EQ(typed(KEY_A), "A") << "switched on for the password";
}

TEST_F(KeyTranslatorTest, SequenceEndsWhereAPasswordBeginsAndWhereItEnds) {
    use("us", "intl", "compose:menu");
    for (const bool isSecure : {true, false, false, true, true}) {
        (void)tap(KEY_APOSTROPHE);
        translator.setSecureInput(isSecure);
        EXPECT_EQ(typed(KEY_E), "e");
        (void)tap(KEY_COMPOSE);
        (void)tap(KEY_O);
        translator.setSecureInput(isSecure);
        EXPECT_EQ(typed(KEY_C), "c");
    }
}

} // namespace tapalong
