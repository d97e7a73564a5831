#include "views/LockdownLimits.h"

#include <algorithm>

namespace tapalong {

namespace {

bool contains(const std::vector<InputLimit>& limits, InputLimit limit) {
    return std::find(limits.begin(), limits.end(), limit) != limits.end();
}

std::string sentenceAboutSysRq(bool endsPrograms, bool restarts) {
    const std::string keys = "Alt and Print Screen together with another key can still ";
    if (endsPrograms && restarts) {
        return keys + "close every program or restart this computer.";
    }
    return keys + (endsPrograms ? "close every program." : "restart this computer.");
}

} // namespace

std::vector<std::string> sentencesAbout(const std::vector<InputLimit>& limits) {
    std::vector<std::string> sentences;
    if (contains(limits, InputLimit::powerButton)) {
        sentences.emplace_back("The power button can still switch this computer off.");
    }
    if (contains(limits, InputLimit::sleepKey)) {
        sentences.emplace_back("The sleep key can still put this computer to sleep.");
    }
    const bool endsPrograms = contains(limits, InputLimit::sysRqEndsPrograms);
    const bool restarts = contains(limits, InputLimit::sysRqRestarts);
    if (endsPrograms || restarts) {
        sentences.push_back(sentenceAboutSysRq(endsPrograms, restarts));
    }
    if (contains(limits, InputLimit::serverKeys)) {
        sentences.emplace_back(
            "Some keys can still get past it: Control and Alt together with a function key or Backspace can switch to "
            "a text screen or end all programs, Shift held or pressed five times can change how the keyboard works, "
            "and shortcuts of other programs can still act.");
    }
    if (contains(limits, InputLimit::touchpadGestures)) {
        sentences.emplace_back("Touchpad gestures can still reach the desktop.");
    }
    return sentences;
}

} // namespace tapalong
