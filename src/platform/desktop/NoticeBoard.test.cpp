#include "platform/desktop/NoticeBoard.h"

#include <gtest/gtest.h>

namespace tapalong {

namespace {

using Sentences = std::vector<std::string>;

TEST(NoticeBoard, SentenceStandsUntilItIsTakenBack) {
    NoticeBoard board;
    board.set("disk", "The disk is full.");
    board.set("sound", "There is no sound.");
    EXPECT_EQ(board.notices(), (Sentences{"The disk is full.", "There is no sound."}));
    board.clear("disk");
    EXPECT_EQ(board.notices(), Sentences{"There is no sound."});
}

TEST(NoticeBoard, SameKeyHoldsOneSentence) {
    NoticeBoard board;
    board.set("disk", "The disk is full.");
    board.set("disk", "The disk is write-protected.");
    EXPECT_EQ(board.notices(), Sentences{"The disk is write-protected."});
}

TEST(NoticeBoard, AnnouncesChangesBeforeTheyHappenAndNothingElse) {
    NoticeBoard board;
    std::vector<std::size_t> countsSeen;
    const auto subscription = board.objectWillChange([&] { countsSeen.push_back(board.notices().size()); });
    board.clear("disk");
    board.set("disk", "The disk is full.");
    board.set("disk", "The disk is full.");
    board.clear("disk");
    EXPECT_EQ(countsSeen, (std::vector<std::size_t>{0, 1}));
}

} // namespace

} // namespace tapalong
