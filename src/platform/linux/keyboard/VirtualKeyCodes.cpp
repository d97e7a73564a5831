#include "platform/linux/keyboard/VirtualKeyCodes.h"

#include <linux/input-event-codes.h>

#include <algorithm>
#include <array>

namespace tapalong {

namespace {

struct Entry {
    std::uint32_t kernelCode;
    VirtualKey key;
};

constexpr auto ordinary = KeyKind::ordinary;
constexpr auto modifier = KeyKind::modifier;
constexpr auto function = KeyKind::function;
constexpr auto keypad = KeyKind::numericPad;
constexpr auto arrow = KeyKind::arrow;

// One line per key, in the order of the kernel's codes, which is nearly that of the rows of a keyboard.
constexpr auto table = std::to_array<Entry>({
    {KEY_ESC, {53, ordinary}},
    {KEY_1, {18, ordinary}},
    {KEY_2, {19, ordinary}},
    {KEY_3, {20, ordinary}},
    {KEY_4, {21, ordinary}},
    {KEY_5, {23, ordinary}},
    {KEY_6, {22, ordinary}},
    {KEY_7, {26, ordinary}},
    {KEY_8, {28, ordinary}},
    {KEY_9, {25, ordinary}},
    {KEY_0, {29, ordinary}},
    {KEY_MINUS, {27, ordinary}},
    {KEY_EQUAL, {24, ordinary}},
    {KEY_BACKSPACE, {51, ordinary}},
    {KEY_TAB, {48, ordinary}},
    {KEY_Q, {12, ordinary}},
    {KEY_W, {13, ordinary}},
    {KEY_E, {14, ordinary}},
    {KEY_R, {15, ordinary}},
    {KEY_T, {17, ordinary}},
    {KEY_Y, {16, ordinary}},
    {KEY_U, {32, ordinary}},
    {KEY_I, {34, ordinary}},
    {KEY_O, {31, ordinary}},
    {KEY_P, {35, ordinary}},
    {KEY_LEFTBRACE, {33, ordinary}},
    {KEY_RIGHTBRACE, {30, ordinary}},
    {KEY_ENTER, {36, ordinary}},
    {KEY_LEFTCTRL, {59, modifier}},
    {KEY_A, {0, ordinary}},
    {KEY_S, {1, ordinary}},
    {KEY_D, {2, ordinary}},
    {KEY_F, {3, ordinary}},
    {KEY_G, {5, ordinary}},
    {KEY_H, {4, ordinary}},
    {KEY_J, {38, ordinary}},
    {KEY_K, {40, ordinary}},
    {KEY_L, {37, ordinary}},
    {KEY_SEMICOLON, {41, ordinary}},
    {KEY_APOSTROPHE, {39, ordinary}},
    {KEY_GRAVE, {50, ordinary}},
    {KEY_LEFTSHIFT, {56, modifier}},
    {KEY_BACKSLASH, {42, ordinary}},
    {KEY_Z, {6, ordinary}},
    {KEY_X, {7, ordinary}},
    {KEY_C, {8, ordinary}},
    {KEY_V, {9, ordinary}},
    {KEY_B, {11, ordinary}},
    {KEY_N, {45, ordinary}},
    {KEY_M, {46, ordinary}},
    {KEY_COMMA, {43, ordinary}},
    {KEY_DOT, {47, ordinary}},
    {KEY_SLASH, {44, ordinary}},
    {KEY_RIGHTSHIFT, {60, modifier}},
    {KEY_KPASTERISK, {67, keypad}},
    {KEY_LEFTALT, {58, modifier}},
    {KEY_SPACE, {49, ordinary}},
    {KEY_CAPSLOCK, {57, modifier}},
    {KEY_F1, {122, function}},
    {KEY_F2, {120, function}},
    {KEY_F3, {99, function}},
    {KEY_F4, {118, function}},
    {KEY_F5, {96, function}},
    {KEY_F6, {97, function}},
    {KEY_F7, {98, function}},
    {KEY_F8, {100, function}},
    {KEY_F9, {101, function}},
    {KEY_F10, {109, function}},
    {KEY_NUMLOCK, {71, keypad}}, // the keypad's Clear key lies there
    {KEY_SCROLLLOCK, {107, function}},
    {KEY_KP7, {89, keypad}},
    {KEY_KP8, {91, keypad}},
    {KEY_KP9, {92, keypad}},
    {KEY_KPMINUS, {78, keypad}},
    {KEY_KP4, {86, keypad}},
    {KEY_KP5, {87, keypad}},
    {KEY_KP6, {88, keypad}},
    {KEY_KPPLUS, {69, keypad}},
    {KEY_KP1, {83, keypad}},
    {KEY_KP2, {84, keypad}},
    {KEY_KP3, {85, keypad}},
    {KEY_KP0, {82, keypad}},
    {KEY_KPDOT, {65, keypad}},
    {KEY_102ND, {10, ordinary}},
    {KEY_F11, {103, function}},
    {KEY_F12, {111, function}},
    {KEY_RO, {94, ordinary}},
    {KEY_KATAKANA, {104, ordinary}},
    {KEY_HIRAGANA, {104, ordinary}},
    {KEY_HENKAN, {104, ordinary}},
    {KEY_KATAKANAHIRAGANA, {104, ordinary}},
    {KEY_MUHENKAN, {102, ordinary}},
    {KEY_KPJPCOMMA, {95, keypad}},
    {KEY_KPENTER, {76, keypad}},
    {KEY_RIGHTCTRL, {62, modifier}},
    {KEY_KPSLASH, {75, keypad}},
    {KEY_SYSRQ, {105, function}}, // Print, Scroll Lock and Pause lie where F13, F14 and F15 do
    {KEY_RIGHTALT, {61, modifier}},
    {KEY_HOME, {115, function}},
    {KEY_UP, {126, arrow}},
    {KEY_PAGEUP, {116, function}},
    {KEY_LEFT, {123, arrow}},
    {KEY_RIGHT, {124, arrow}},
    {KEY_END, {119, function}},
    {KEY_DOWN, {125, arrow}},
    {KEY_PAGEDOWN, {121, function}},
    {KEY_INSERT, {114, function}},
    {KEY_DELETE, {117, function}},
    {KEY_KPEQUAL, {81, keypad}},
    {KEY_PAUSE, {113, function}},
    {KEY_KPCOMMA, {95, keypad}},
    {KEY_HANGEUL, {104, ordinary}},
    {KEY_HANJA, {102, ordinary}},
    {KEY_YEN, {93, ordinary}},
    {KEY_LEFTMETA, {55, modifier}},
    {KEY_RIGHTMETA, {54, modifier}},
    {KEY_COMPOSE, {110, ordinary}}, // the Menu key, by the name the kernel gives it
    {KEY_HELP, {114, function}},
    {KEY_F13, {105, function}},
    {KEY_F14, {107, function}},
    {KEY_F15, {113, function}},
    {KEY_F16, {106, function}},
    {KEY_F17, {64, function}},
    {KEY_F18, {79, function}},
    {KEY_F19, {80, function}},
    {KEY_F20, {90, function}},
});

constexpr bool byKernelCode(const Entry& left, const Entry& right) {
    return left.kernelCode < right.kernelCode;
}

static_assert(std::is_sorted(table.begin(), table.end(), byKernelCode), "looked up by halving");

} // namespace

std::optional<VirtualKey> virtualKeyOf(std::uint32_t kernelCode) {
    const auto* const found =
        std::lower_bound(table.begin(), table.end(), Entry{.kernelCode = kernelCode, .key = {}}, byKernelCode);
    if (found == table.end() || found->kernelCode != kernelCode) {
        return std::nullopt;
    }
    return found->key;
}

ModifierFlags ownFlagsOf(KeyKind kind) {
    switch (kind) {
    case KeyKind::function:
        return Modifier::function;
    case KeyKind::numericPad:
        return Modifier::numericPad;
    case KeyKind::arrow:
        return Modifier::function | Modifier::numericPad;
    case KeyKind::ordinary:
    case KeyKind::modifier:
        break;
    }
    return 0;
}

} // namespace tapalong
