#include "lockdown/KeyClassification.h"

#include "lockdown/KeyEvents.test.h"
#include "settings/SettingsFixture.test.h"

#include <map>

namespace tapalong {
namespace {

using simulated::keyEvent;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyQ = 12;
constexpr std::int64_t keySpace = 49;
constexpr std::int64_t keyEscape = 53;
constexpr std::int64_t keypadEnter = 76;
constexpr std::int64_t keyHelp = 114;
constexpr std::int64_t keyHome = 115;
constexpr std::int64_t keyPageUp = 116;
constexpr std::int64_t keyForwardDelete = 117;
constexpr std::int64_t keyF4 = 118;
constexpr std::int64_t keyEnd = 119;
constexpr std::int64_t keyUnknown = 200;

/// Keys that mean something whatever they type.
const std::map<std::int64_t, std::string>& fixedMeanings() {
    static const std::map<std::int64_t, std::string> table = [] {
        std::map<std::int64_t, std::string> meanings{
            {36, "enter"}, {76, "enter"}, {49, "space"}, {51, "delete"}, {117, "delete"}, {48, "tab"},
            {53, "'🚀'"},   {123, "'←'"},  {124, "'→'"},  {125, "'↓'"},   {126, "'↑'"},
        };
        for (const int code :
             {122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111, 105, 107, 113, 106, 64, 79, 80, 90}) {
            meanings.emplace(code, "celestial");
        }
        return meanings;
    }();
    return table;
}

struct KeyClassificationTest : SettingsFixture {
    static std::string byTap(std::int64_t keyCode, ModifierFlags flags, std::optional<std::string> text) {
        return describe(classifyKeyEvent(keyCode, flags, keyEvent(keyCode, flags, std::move(text))));
    }
    std::string byMonitor(std::int64_t keyCode, ModifierFlags flags, std::optional<std::string> text) {
        return describe(classifyNSEvent(keyCode, flags, keyEvent(keyCode, flags, std::move(text)), settings));
    }
};

TEST_F(KeyClassificationTest, EveryKeyWithAMeaningOfItsOwnKeepsItForTapAndMonitor) {
    for (const bool kioskMode : {false, true}) {
        settings.kioskMode.set(kioskMode);
        for (const auto& [code, meaning] : fixedMeanings()) {
            EXPECT_EQ(byTap(code, 0, "x"), meaning) << code;
            EXPECT_EQ(byMonitor(code, 0, "x"), meaning) << code;
            EXPECT_EQ(byTap(code, Modifier::shift | Modifier::option | Modifier::capsLock, std::nullopt), meaning);
        }
    }
}

TEST_F(KeyClassificationTest, EveryOtherKeyIsDecidedByItsText) {
    settings.kioskMode.set(true);
    for (std::int64_t code = 0; code < 256; ++code) {
        if (fixedMeanings().contains(code) || (code >= 114 && code <= 119)) {
            continue;
        }
        EXPECT_EQ(byTap(code, 0, "x"), "'x'") << code;
        EXPECT_EQ(byMonitor(code, 0, "x"), "'x'") << code;
        EXPECT_EQ(byTap(code, 0, std::nullopt), "suppressed") << code;
    }
}

TEST_F(KeyClassificationTest, CommandQIsSuppressedByTheTap) {
    EXPECT_EQ(byTap(keyQ, Modifier::command, "q"), "suppressed");
}

TEST_F(KeyClassificationTest, ControlSpaceIsSuppressedThoughSpaceAloneIsSpace) {
    EXPECT_EQ(byTap(keySpace, Modifier::control, " "), "suppressed");
    EXPECT_EQ(byTap(keySpace, 0, " "), "space");
}

TEST_F(KeyClassificationTest, ShiftOptionAndCapsLockDoNotChangeTheMeaning) {
    EXPECT_EQ(byTap(keyA, Modifier::shift, "A"), "'A'");
    EXPECT_EQ(byTap(keyA, Modifier::option, "å"), "'å'");
    EXPECT_EQ(byTap(keyA, Modifier::capsLock, "A"), "'A'");
}

TEST_F(KeyClassificationTest, ADeadKeyWithoutTextIsSuppressed) {
    EXPECT_EQ(byTap(keyA, 0, ""), "suppressed");
    EXPECT_EQ(byTap(keyA, 0, std::nullopt), "suppressed");
    EXPECT_EQ(describe(classifyKeyEvent(keyA, 0, InputEvent{})), "suppressed") << "no provider of text at all";
}

TEST_F(KeyClassificationTest, EscapeTypesARocketAndClosesNothing) {
    EXPECT_EQ(byTap(keyEscape, 0, "\x1B"), "'🚀'");
    EXPECT_EQ(byMonitor(keyEscape, 0, "\x1B"), "'🚀'");
}

TEST_F(KeyClassificationTest, ForwardDeleteAndF4KeepTheirMeaningInsideTheNavigationBlock) {
    settings.kioskMode.set(true);
    EXPECT_EQ(byTap(keyForwardDelete, 0, std::nullopt), "delete");
    EXPECT_EQ(byTap(keyF4, 0, std::nullopt), "celestial");
    EXPECT_EQ(byMonitor(keyForwardDelete, 0, std::nullopt), "delete");
    EXPECT_EQ(byMonitor(keyF4, 0, std::nullopt), "celestial");
}

TEST_F(KeyClassificationTest, NavigationKeysAreSuppressedByTheTapWhateverTheyType) {
    for (const auto code : {keyHelp, keyHome, keyPageUp, keyEnd}) {
        EXPECT_EQ(byTap(code, 0, "x"), "suppressed") << code;
    }
}

TEST_F(KeyClassificationTest, NavigationKeysFallToTheirTextOnlyInTheMonitorWithoutLockdown) {
    for (const auto code : {keyHelp, keyHome, keyPageUp, keyEnd}) {
        settings.kioskMode.set(false);
        EXPECT_EQ(byMonitor(code, 0, "x"), "'x'") << code;
        EXPECT_EQ(byMonitor(code, 0, std::nullopt), "suppressed") << code;
        settings.kioskMode.set(true);
        EXPECT_EQ(byMonitor(code, 0, "x"), "suppressed") << code;
    }
}

TEST_F(KeyClassificationTest, WithoutLockdownACommandChordIsAnOrdinaryKeyToTheMonitor) {
    EXPECT_EQ(byMonitor(keyA, Modifier::command, "a"), "'a'");
    settings.kioskMode.set(true);
    EXPECT_EQ(byMonitor(keyA, Modifier::command, "a"), "suppressed");
}

TEST_F(KeyClassificationTest, TheMonitorsClassificationAsksForLockdownAtEachCall) {
    for (const bool kioskMode : {true, false, true}) {
        settings.kioskMode.set(kioskMode);
        EXPECT_EQ(byMonitor(keySpace, Modifier::control, " "), kioskMode ? "suppressed" : "space");
    }
}

TEST_F(KeyClassificationTest, TheTapDoesNotAskForLockdown) {
    EXPECT_FALSE(settings.kioskMode.get());
    EXPECT_EQ(byTap(keyQ, Modifier::command, "q"), "suppressed");
}

TEST_F(KeyClassificationTest, AControlChordTypesAControlCharacterAndIsSuppressedEvenWithoutLockdown) {
    EXPECT_EQ(byMonitor(keyA, Modifier::control, "\x01"), "suppressed");
}

TEST_F(KeyClassificationTest, AZeroWidthSpaceIsSuppressed) {
    EXPECT_EQ(byTap(keyA, 0, "\u200B"), "suppressed");
    EXPECT_EQ(byTap(keyA, 0, "\u00AD"), "suppressed") << "and so is every other ignorable";
}

TEST_F(KeyClassificationTest, ATabFromAnUnknownKeyIsSuppressed) {
    EXPECT_EQ(byTap(keyUnknown, 0, "\t"), "suppressed");
    EXPECT_EQ(byTap(keyUnknown, 0, "\x7F"), "suppressed");
}

TEST_F(KeyClassificationTest, SecondControlBlockCharactersArePrintable) {
    EXPECT_EQ(byTap(keyUnknown, 0, "\u0080"), "'\u0080'");
    EXPECT_EQ(byTap(keyUnknown, 0, "\u009F"), "'\u009F'");
}

TEST_F(KeyClassificationTest, KeypadEnterIsEnterLikeReturn) {
    EXPECT_EQ(byTap(keypadEnter, 0, "\x03"), "enter");
    EXPECT_EQ(byMonitor(keypadEnter, 0, "\x03"), "enter");
}

TEST_F(KeyClassificationTest, OnlyTheFirstCharacterOfTheTextCounts) {
    EXPECT_EQ(byTap(keyA, 0, "abc"), "'a'");
    EXPECT_EQ(byTap(keyA, 0, "e\u0301x"), "'e\u0301'") << "one character of two scalars";
    EXPECT_EQ(byTap(keyA, 0, "\u200Bx"), "suppressed");
}

TEST_F(KeyClassificationTest, TheFirstScalarOfTheCharacterDecidesWhetherItPrints) {
    EXPECT_EQ(byTap(keyA, 0, "a\u200D"), "'a\u200D'");
}

TEST_F(KeyClassificationTest, TheTextIsAskedForOnlyWhereItDecides) {
    int asked = 0;
    InputEvent event{.keyCode = keySpace, .characters = [&asked] {
                         ++asked;
                         return std::optional<std::string>("x");
                     }};
    std::ignore = classifyKeyEvent(keySpace, 0, event);
    std::ignore = classifyKeyEvent(keyA, Modifier::command, event);
    EXPECT_EQ(asked, 0);
    std::ignore = classifyKeyEvent(keyA, 0, event);
    EXPECT_EQ(asked, 1);
}

} // namespace
} // namespace tapalong
