#include "session/Uuid.h"

#include "platform/simulated/SimulatedServices.h"

#include <gtest/gtest.h>

#include <set>

namespace tapalong {
namespace {

TEST(Uuid, RandomOnesCarryTheirVersionAndVariant) {
    simulated::SimulatedRandom random(1);
    for (int i = 0; i < 100; ++i) {
        const auto uuid = Uuid::random(random);
        EXPECT_EQ(uuid.high & 0xF000U, 0x4000U);
        EXPECT_EQ(uuid.low >> 62U, 2U);
    }
}

TEST(Uuid, NoTwoOfAThousandAreEqual) {
    simulated::SimulatedRandom random(1);
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        seen.insert(Uuid::random(random));
    }
    EXPECT_EQ(seen.size(), 1000U);
}

TEST(Uuid, BothHalvesCount) {
    EXPECT_EQ((Uuid{1, 2}), (Uuid{1, 2}));
    EXPECT_NE((Uuid{1, 2}), (Uuid{1, 3}));
    EXPECT_LT((Uuid{1, 9}), (Uuid{2, 0}));
}

} // namespace
} // namespace tapalong
