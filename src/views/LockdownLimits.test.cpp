#include "views/LockdownLimits.h"

#include <gtest/gtest.h>

namespace tapalong {
namespace {

using Sentences = std::vector<std::string>;

TEST(LockdownLimits, NothingOpenIsNothingToSay) {
    EXPECT_EQ(sentencesAbout({}), Sentences{});
}

TEST(LockdownLimits, EachIsSaidPlainly) {
    EXPECT_EQ(
        sentencesAbout(
            {InputLimit::powerButton, InputLimit::sleepKey, InputLimit::serverKeys, InputLimit::touchpadGestures}),
        (Sentences{"The power button can still switch this computer off.",
                   "The sleep key can still put this computer to sleep.",
                   "Some keys can still get past it: Control and Alt together with a function key or Backspace can "
                   "switch to a text screen or end all programs, Shift held or pressed five times can change how the "
                   "keyboard works, and "
                   "shortcuts of other programs can still act.",
                   "Touchpad gestures can still reach the desktop."}));
}

TEST(LockdownLimits, ChordsWithSysRqShareOneSentence) {
    const std::string keys = "Alt and Print Screen together with another key can still ";
    EXPECT_EQ(sentencesAbout({InputLimit::sysRqEndsPrograms}), Sentences{keys + "close every program."});
    EXPECT_EQ(sentencesAbout({InputLimit::sysRqRestarts}), Sentences{keys + "restart this computer."});
    EXPECT_EQ(sentencesAbout({InputLimit::sysRqEndsPrograms, InputLimit::sysRqRestarts}),
              Sentences{keys + "close every program or restart this computer."});
    EXPECT_EQ(sentencesAbout({InputLimit::sysRqStopsSaving}), Sentences{keys + "keep everything from being saved."});
    EXPECT_EQ(sentencesAbout({InputLimit::sysRqEndsPrograms, InputLimit::sysRqRestarts, InputLimit::sysRqStopsSaving}),
              Sentences{keys + "close every program, restart this computer or keep everything from being saved."});
}

} // namespace
} // namespace tapalong
