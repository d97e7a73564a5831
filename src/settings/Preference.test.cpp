#include "settings/Preference.h"

#include "platform/simulated/SimulatedServices.h"

#include <gtest/gtest.h>

namespace tapalong {
namespace {

struct Owner final : ObservableObject {};

struct PreferenceTest : testing::Test {
    simulated::EffectLog effects;
    simulated::SimulatedDefaults defaults{effects};
    Owner owner;
    Preference<double> size{owner, defaults, "size", 72.0};
    Preference<std::int64_t> count{owner, defaults, "count", 17};
    Preference<bool> flag{owner, defaults, "flag", true};
    Preference<std::string> name{owner, defaults, "name", "tink"};
    Preference<ScreenCorner> corner{owner, defaults, "corner", ScreenCorner::topRight};
};

TEST_F(PreferenceTest, AKeyNeverWrittenReadsAsTheDefault) {
    EXPECT_EQ(size.get(), 72.0);
    EXPECT_EQ(count.get(), 17);
    EXPECT_TRUE(flag.get());
    EXPECT_EQ(name.get(), "tink");
    EXPECT_EQ(corner.get(), ScreenCorner::topRight);
    EXPECT_TRUE(defaults.stored.empty()) << "reading and making write nothing";
}

TEST_F(PreferenceTest, AWriteGoesThroughAtOnceWithItsType) {
    size.set(24);
    count.set(-3);
    flag.set(false);
    name.set("pop");
    corner.set(ScreenCorner::bottomLeft);
    EXPECT_EQ(defaults.value("size"), DefaultsValue(24.0));
    EXPECT_EQ(defaults.value("count"), DefaultsValue(std::int64_t{-3}));
    EXPECT_EQ(defaults.value("flag"), DefaultsValue(false));
    EXPECT_EQ(defaults.value("name"), DefaultsValue(std::string("pop")));
    EXPECT_EQ(defaults.value("corner"), DefaultsValue(std::string("bottomLeft")));
    EXPECT_EQ(corner.get(), ScreenCorner::bottomLeft);
}

TEST_F(PreferenceTest, AWholeNumberServesADouble) {
    defaults.stored["size"] = std::int64_t{48};
    EXPECT_EQ(size.get(), 48.0);
}

TEST_F(PreferenceTest, AValueOfAnotherTypeReadsAsTheDefault) {
    defaults.stored["size"] = std::string("48");
    defaults.stored["count"] = 48.0;
    defaults.stored["flag"] = std::int64_t{0};
    defaults.stored["name"] = false;
    defaults.stored["corner"] = std::int64_t{2};
    EXPECT_EQ(size.get(), 72.0);
    EXPECT_EQ(count.get(), 17);
    EXPECT_TRUE(flag.get());
    EXPECT_EQ(name.get(), "tink");
    EXPECT_EQ(corner.get(), ScreenCorner::topRight);
    defaults.stored["size"] = true;
    EXPECT_EQ(size.get(), 72.0) << "a truth value is no number";
}

TEST_F(PreferenceTest, AnUnknownCornerReadsAsTheDefault) {
    for (const char* text : {"TopLeft", "middle", ""}) {
        defaults.stored["corner"] = std::string(text);
        EXPECT_EQ(corner.get(), ScreenCorner::topRight) << text;
    }
}

TEST_F(PreferenceTest, NothingIsCached) {
    EXPECT_EQ(name.get(), "tink");
    defaults.stored["name"] = std::string("frog");
    EXPECT_EQ(name.get(), "frog");
}

TEST_F(PreferenceTest, ObserversAreToldBeforeTheValueChanges) {
    std::string seen;
    const auto subscription = owner.objectWillChange([&] { seen = name.get(); });
    name.set("pop");
    EXPECT_EQ(seen, "tink");
    EXPECT_EQ(name.get(), "pop");
}

TEST_F(PreferenceTest, TheKeyIsKnown) {
    EXPECT_EQ(size.key(), "size");
}

} // namespace
} // namespace tapalong
