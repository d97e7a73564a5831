#include "platform/desktop/LimitBoard.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

using Limits = std::vector<InputLimit>;

TEST(LimitBoard, LimitsStandInTheirOrderUntilTheyAreClosed) {
    LimitBoard board;
    board.set(InputLimit::touchpadGestures, true);
    board.set(InputLimit::powerButton, true);
    EXPECT_EQ(board.openLimits(), (Limits{InputLimit::powerButton, InputLimit::touchpadGestures}));
    board.set(InputLimit::touchpadGestures, false);
    EXPECT_EQ(board.openLimits(), Limits{InputLimit::powerButton});
}

TEST(LimitBoard, AnnouncesChangesBeforeTheyHappenAndNothingElse) {
    LimitBoard board;
    std::vector<std::size_t> countsSeen;
    const auto subscription = board.objectWillChange([&] { countsSeen.push_back(board.openLimits().size()); });
    board.set(InputLimit::serverKeys, false);
    board.set(InputLimit::serverKeys, true);
    board.set(InputLimit::serverKeys, true);
    board.set(InputLimit::serverKeys, false);
    EXPECT_EQ(countsSeen, (std::vector<std::size_t>{0, 1}));
}

TEST(LimitBoard, EveryFinderLooksEachTime) {
    LimitBoard board;
    int looks = 0;
    board.whenLooking([&] { ++looks; });
    board.whenLooking([&] { board.set(InputLimit::sysRqRestarts, true); });
    EXPECT_EQ(board.openLimits(), Limits{});
    board.lookAgain();
    board.lookAgain();
    EXPECT_EQ(looks, 2);
    EXPECT_EQ(board.openLimits(), Limits{InputLimit::sysRqRestarts});
}

} // namespace

} // namespace tapalong
