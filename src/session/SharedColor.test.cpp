#include "session/SharedColor.h"

#include <gtest/gtest.h>

#include <vector>

namespace tapalong {
namespace {

const Color& colorOf(const SharedColor& shared) {
    return shared;
}

TEST(SharedColor, IsTheColourThatItWasMadeOf) {
    const Color light(SrgbColor{0.1, 0.2, 0.3, 0.4});
    EXPECT_EQ(colorOf(light), light);
    EXPECT_EQ(colorOf(Color(NamedColor::primary)), Color(NamedColor::primary));
    EXPECT_EQ(SharedColor(light)->srgb(), light.srgb());
}

TEST(SharedColor, EqualColoursAreKeptOnce) {
    const SharedColor one(SrgbColor{0.25, 0.5, 0.75});
    const SharedColor other(SrgbColor{0.25, 0.5, 0.75});
    const SharedColor another(SrgbColor{0.25, 0.5, 0.75, 0.5});
    EXPECT_EQ(&colorOf(one), &colorOf(other));
    EXPECT_NE(&colorOf(one), &colorOf(another));
}

TEST(SharedColor, StaysTheSameWhileOthersCome) {
    std::vector<SharedColor> all;
    all.reserve(500);
    for (int i = 0; i < 500; ++i) {
        all.emplace_back(SrgbColor{i / 500.0, 0, 0});
    }
    for (int i = 0; i < 500; ++i) {
        EXPECT_EQ(all.at(static_cast<std::size_t>(i))->srgb().value().red, i / 500.0);
    }
}

} // namespace
} // namespace tapalong
