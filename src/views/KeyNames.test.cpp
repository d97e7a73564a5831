#include "views/KeyNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tapalong {
namespace {

struct Block {
    unsigned firstCode;
    std::vector<std::string> names;
};

const std::vector<Block>& blocks() {
    static const std::vector<Block> list{
        {0, {"A", "S", "D", "F", "H", "G", "Z", "X", "C", "V"}},
        {11, {"B", "Q", "W", "E", "R", "Y", "T"}},
        {18, {"1", "2", "3", "4", "6", "5", "=", "9", "7", "-", "8", "0"}},
        {30, {"]", "O", "U", "[", "I", "P"}},
        {36, {"↩"}},
        {37, {"L", "J", "'", "K", ";", "\\", ",", "/", "N", "M", "."}},
        {48, {"⇥", "Space", "`", "⌫"}},
        {53, {"⎋"}},
        {96, {"F5", "F6", "F7", "F3", "F8", "F9"}},
        {103, {"F11"}},
        {105, {"F13"}},
        {107, {"F14"}},
        {109, {"F10"}},
        {111, {"F12"}},
        {113, {"F15"}},
        {118, {"F4"}},
        {120, {"F2"}},
        {122, {"F1", "←", "→", "↓", "↑"}},
    };
    return list;
}

TEST(KeyNames, SeventyOneKeysHaveANameAndAllOthersTheirNumber) {
    std::vector<std::string> expected(0x10000);
    std::size_t named = 0;
    for (const auto& block : blocks()) {
        for (std::size_t i = 0; i < block.names.size(); ++i) {
            expected.at(block.firstCode + i) = block.names[i];
            ++named;
        }
    }
    EXPECT_EQ(named, 71U);
    for (unsigned code = 0; code < 0x10000; ++code) {
        const auto& name = expected.at(code);
        ASSERT_EQ(keyCodeToString(static_cast<std::uint16_t>(code)),
                  name.empty() ? "Key" + std::to_string(code) : name);
    }
}

TEST(KeyNames, TheTwoGapsInTheTypingBlockAreNumbers) {
    EXPECT_EQ(keyCodeToString(10), "Key10");
    EXPECT_EQ(keyCodeToString(52), "Key52");
}

TEST(KeyNames, SymbolsComeInTheirFixedOrder) {
    EXPECT_EQ(modifiersToSymbols(Modifier::command | Modifier::shift | Modifier::option | Modifier::control), "⌃⌥⇧⌘");
    EXPECT_EQ(modifiersToSymbols(Modifier::command | Modifier::shift), "⇧⌘");
    EXPECT_EQ(modifiersToSymbols(Modifier::option), "⌥");
    EXPECT_EQ(modifiersToSymbols(0), "");
}

TEST(KeyNames, OtherModifierBitsAddNothing) {
    const ModifierFlags four = Modifier::control | Modifier::option | Modifier::shift | Modifier::command;
    EXPECT_EQ(modifiersToSymbols(~four), "");
    EXPECT_EQ(modifiersToSymbols(~ModifierFlags{0}), "⌃⌥⇧⌘");
}

} // namespace
} // namespace tapalong
