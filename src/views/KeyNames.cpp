#include "views/KeyNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tapalong {

namespace {

using namespace std::string_view_literals;

// Ascending, for the binary search.
constexpr std::array<std::pair<std::uint16_t, std::string_view>, 71> names{{
    {0, "A"sv},     {1, "S"sv},    {2, "D"sv},     {3, "F"sv},     {4, "H"sv},     {5, "G"sv},     {6, "Z"sv},
    {7, "X"sv},     {8, "C"sv},    {9, "V"sv},     {11, "B"sv},    {12, "Q"sv},    {13, "W"sv},    {14, "E"sv},
    {15, "R"sv},    {16, "Y"sv},   {17, "T"sv},    {18, "1"sv},    {19, "2"sv},    {20, "3"sv},    {21, "4"sv},
    {22, "6"sv},    {23, "5"sv},   {24, "="sv},    {25, "9"sv},    {26, "7"sv},    {27, "-"sv},    {28, "8"sv},
    {29, "0"sv},    {30, "]"sv},   {31, "O"sv},    {32, "U"sv},    {33, "["sv},    {34, "I"sv},    {35, "P"sv},
    {36, "↩"sv},    {37, "L"sv},   {38, "J"sv},    {39, "'"sv},    {40, "K"sv},    {41, ";"sv},    {42, "\\"sv},
    {43, ","sv},    {44, "/"sv},   {45, "N"sv},    {46, "M"sv},    {47, "."sv},    {48, "⇥"sv},    {49, "Space"sv},
    {50, "`"sv},    {51, "⌫"sv},   {53, "⎋"sv},    {96, "F5"sv},   {97, "F6"sv},   {98, "F7"sv},   {99, "F3"sv},
    {100, "F8"sv},  {101, "F9"sv}, {103, "F11"sv}, {105, "F13"sv}, {107, "F14"sv}, {109, "F10"sv}, {111, "F12"sv},
    {113, "F15"sv}, {118, "F4"sv}, {120, "F2"sv},  {122, "F1"sv},  {123, "←"sv},   {124, "→"sv},   {125, "↓"sv},
    {126, "↑"sv},
}};

constexpr std::array<std::pair<ModifierFlags, std::string_view>, 4> symbols{{
    {Modifier::control, "⌃"sv},
    {Modifier::option, "⌥"sv},
    {Modifier::shift, "⇧"sv},
    {Modifier::command, "⌘"sv},
}};

} // namespace

std::string keyCodeToString(std::uint16_t keyCode) {
    const auto* const found = std::lower_bound(names.begin(), names.end(), keyCode,
                                               [](const auto& entry, auto code) { return entry.first < code; });
    if (found != names.end() && found->first == keyCode) {
        return std::string(found->second);
    }
    return "Key" + std::to_string(keyCode);
}

std::string modifiersToSymbols(ModifierFlags flags) {
    std::string text;
    for (const auto& [flag, symbol] : symbols) {
        if ((flags & flag) != 0) {
            text += symbol;
        }
    }
    return text;
}

} // namespace tapalong
