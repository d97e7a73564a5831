#include "views/ControlRange.h"

#include <gtest/gtest.h>

#include <limits>

namespace tapalong {
namespace {

TEST(ControlRange, TheDwellSliderCannotLeaveItsRange) {
    EXPECT_EQ(dwellTimeRange.snapped(0.25), 0.5);
    EXPECT_EQ(dwellTimeRange.snapped(5.5), 5.0);
    EXPECT_EQ(dwellTimeRange.snapped(-100), 0.5);
}

TEST(ControlRange, SlidersMoveInSteps) {
    EXPECT_EQ(dwellTimeRange.snapped(1.7), 1.5);
    EXPECT_EQ(dwellTimeRange.snapped(1.8), 2.0);
    EXPECT_EQ(fontSizeRange.snapped(73), 72);
    EXPECT_EQ(fontSizeRange.snapped(75), 76);
    EXPECT_EQ(fontSizeRange.snapped(23), 24);
    EXPECT_EQ(fontSizeRange.snapped(1000), 200);
}

TEST(ControlRange, AStepThatDoesNotDivideTheRangeStillEndsAtItsUpperEnd) {
    constexpr SliderRange uneven{0, 10, 4};
    EXPECT_EQ(uneven.snapped(10), 10);
}

TEST(ControlRange, EveryDwellTimeShowsOneDecimal) {
    EXPECT_EQ(dwellTimeLabel(0.5), "0.5s");
    EXPECT_EQ(dwellTimeLabel(1.5), "1.5s");
    EXPECT_EQ(dwellTimeLabel(5), "5.0s");
}

TEST(ControlRange, TheLongestDoubleHasALabelToo) {
    EXPECT_EQ(dwellTimeLabel(-std::numeric_limits<double>::max()).size(), 313U);
}

TEST(ControlRange, TheStepperCannotGoBelowItsRange) {
    EXPECT_EQ(maxCharactersRange.decremented(2000), 1000);
    EXPECT_FALSE(maxCharactersRange.canDecrement(1000));
    EXPECT_EQ(maxCharactersRange.decremented(1000), 1000);
    EXPECT_EQ(maxCharactersRange.decremented(1500), 1000);
}

TEST(ControlRange, TheStepperCannotGoAboveItsRange) {
    EXPECT_EQ(maxCharactersRange.incremented(49000), 50000);
    EXPECT_FALSE(maxCharactersRange.canIncrement(50000));
    EXPECT_EQ(maxCharactersRange.incremented(50000), 50000);
    EXPECT_EQ(maxCharactersRange.incremented(49500), 50000);
}

TEST(ControlRange, AStoredNumberOutsideTheRangeIsLedBackIntoIt) {
    EXPECT_EQ(maxCharactersRange.incremented(-7), 1000);
    EXPECT_EQ(maxCharactersRange.decremented(1000000), 50000);
}

TEST(ControlRange, FontSizesAreCutToWholePoints) {
    EXPECT_EQ(fontSizeLabel(72), "72 pt");
    EXPECT_EQ(fontSizeLabel(72.999), "72 pt");
    EXPECT_EQ(fontSizeLabel(-0.5), "0 pt");
}

TEST(ControlRangeDeathTest, AFontSizeWithoutAWholeNumberStopsTheProgram) {
    constexpr auto message = "the font size must be a finite number";
    EXPECT_DEATH(std::ignore = fontSizeLabel(std::numeric_limits<double>::infinity()), message);
    EXPECT_DEATH(std::ignore = fontSizeLabel(std::numeric_limits<double>::quiet_NaN()), message);
    EXPECT_DEATH(std::ignore = fontSizeLabel(1e19), message);
    EXPECT_DEATH(std::ignore = fontSizeLabel(-1e19), message);
}

} // namespace
} // namespace tapalong
