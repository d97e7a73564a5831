#include "platform/linux/keyboard/VirtualKeyCodes.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

#include <map>
#include <set>
#include <string>

namespace tapalong {

namespace {

// Written down the other way round than the table, from the keyboards' side: legends in their rows, codes in theirs.
const std::map<std::uint32_t, std::int64_t> expectedCodes = {
    // letters, in alphabetical order
    {30, 0},
    {48, 11},
    {46, 8},
    {32, 2},
    {18, 14},
    {33, 3},
    {34, 5},
    {35, 4},
    {23, 34},
    {36, 38},
    {37, 40},
    {38, 37},
    {50, 46},
    {49, 45},
    {24, 31},
    {25, 35},
    {16, 12},
    {19, 15},
    {31, 1},
    {20, 17},
    {22, 32},
    {47, 9},
    {17, 13},
    {45, 7},
    {21, 16},
    {44, 6},
    // digits 1 to 9 and 0
    {2, 18},
    {3, 19},
    {4, 20},
    {5, 21},
    {6, 23},
    {7, 22},
    {8, 26},
    {9, 28},
    {10, 25},
    {11, 29},
    // - = [ ] backslash ; ' ` , . /
    {12, 27},
    {13, 24},
    {26, 33},
    {27, 30},
    {43, 42},
    {39, 41},
    {40, 39},
    {41, 50},
    {51, 43},
    {52, 47},
    {53, 44},
    // Escape, Backspace, Tab, Return, Space
    {1, 53},
    {14, 51},
    {15, 48},
    {28, 36},
    {57, 49},
    // left and right Control, Shift, Alt, Super; Caps Lock
    {29, 59},
    {97, 62},
    {42, 56},
    {54, 60},
    {56, 58},
    {100, 61},
    {125, 55},
    {126, 54},
    {58, 57},
    // F1 to F12, F13 to F20
    {59, 122},
    {60, 120},
    {61, 99},
    {62, 118},
    {63, 96},
    {64, 97},
    {65, 98},
    {66, 100},
    {67, 101},
    {68, 109},
    {87, 103},
    {88, 111},
    {183, 105},
    {184, 107},
    {185, 113},
    {186, 106},
    {187, 64},
    {188, 79},
    {189, 80},
    {190, 90},
    // Print, Scroll Lock, Pause
    {99, 105},
    {70, 107},
    {119, 113},
    // Help, Insert, Home, Page Up, Delete, End, Page Down
    {138, 114},
    {110, 114},
    {102, 115},
    {104, 116},
    {111, 117},
    {107, 119},
    {109, 121},
    // left, right, down, up
    {105, 123},
    {106, 124},
    {108, 125},
    {103, 126},
    // keypad: Num Lock / * - + Enter . = , (two codes), 0 to 9
    {69, 71},
    {98, 75},
    {55, 67},
    {74, 78},
    {78, 69},
    {96, 76},
    {83, 65},
    {117, 81},
    {121, 95},
    {95, 95},
    {82, 82},
    {79, 83},
    {80, 84},
    {81, 85},
    {75, 86},
    {76, 87},
    {77, 88},
    {71, 89},
    {72, 91},
    {73, 92},
    // the ISO key, the Japanese and Korean keys, Menu
    {86, 10},
    {124, 93},
    {89, 94},
    {94, 102},
    {92, 104},
    {93, 104},
    {90, 104},
    {91, 104},
    {122, 104},
    {123, 102},
    {127, 110},
};

} // namespace

TEST(VirtualKeyCodes, EveryKeyHasItsCodeAndNoOtherKeyHasOne) {
    for (std::uint32_t kernelCode = 0; kernelCode < 768; ++kernelCode) {
        const auto key = virtualKeyOf(kernelCode);
        const auto expected = expectedCodes.find(kernelCode);
        ASSERT_EQ(key.has_value(), expected != expectedCodes.end()) << "kernel code " << kernelCode;
        if (key) {
            EXPECT_EQ(key->code, expected->second) << "kernel code " << kernelCode;
        }
    }
}

TEST(VirtualKeyCodes, MediaAndBrightnessKeysHaveNone) {
    for (const std::uint32_t code : {KEY_MUTE, KEY_VOLUMEDOWN, KEY_VOLUMEUP, KEY_PLAYPAUSE, KEY_NEXTSONG, KEY_POWER,
                                     KEY_SLEEP, KEY_WWW, KEY_MAIL, KEY_BRIGHTNESSDOWN, KEY_BRIGHTNESSUP, KEY_F21}) {
        EXPECT_FALSE(virtualKeyOf(code).has_value()) << code;
    }
}

TEST(VirtualKeyCodes, ModifiersAreTheNineModifierKeys) {
    const std::set<std::int64_t> modifiers = {54, 55, 56, 57, 58, 59, 60, 61, 62};
    for (const auto& [kernelCode, code] : expectedCodes) {
        EXPECT_EQ(virtualKeyOf(kernelCode)->kind == KeyKind::modifier, modifiers.contains(code)) << code;
    }
}

TEST(VirtualKeyCodes, FunctionBitIsOnFunctionArrowAndNavigationKeysOnly) {
    const std::set<std::int64_t> keys = {122, 120, 99, 118, 96, 97,  98,  100, 101, 109, 103, 111, 105, 107, 113,
                                         106, 64,  79, 80,  90, 114, 115, 116, 117, 119, 121, 123, 124, 125, 126};
    for (const auto& [kernelCode, code] : expectedCodes) {
        const auto flags = ownFlagsOf(virtualKeyOf(kernelCode)->kind);
        EXPECT_EQ((flags & Modifier::function) != 0, keys.contains(code)) << code;
    }
}

TEST(VirtualKeyCodes, NumericPadBitIsOnKeypadAndArrowKeysOnly) {
    const std::set<std::int64_t> keys = {65, 67, 69, 71, 75, 76, 78, 81,  82,  83,  84, 85,
                                         86, 87, 88, 89, 91, 92, 95, 123, 124, 125, 126};
    for (const auto& [kernelCode, code] : expectedCodes) {
        const auto flags = ownFlagsOf(virtualKeyOf(kernelCode)->kind);
        EXPECT_EQ((flags & Modifier::numericPad) != 0, keys.contains(code)) << code;
        EXPECT_EQ(flags & ~(Modifier::numericPad | Modifier::function), 0U) << code;
    }
}

} // namespace tapalong
