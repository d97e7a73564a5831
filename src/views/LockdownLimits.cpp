#include "views/LockdownLimits.h"

#include <algorithm>
#include <utility>

namespace tapalong {

namespace {

bool contains(const std::vector<InputLimit>& limits, InputLimit limit) {
    return std::find(limits.begin(), limits.end(), limit) != limits.end();
}

// Empty when no such chord does anything.
std::string sentenceAboutSysRq(const std::vector<InputLimit>& limits) {
    std::vector<std::string> deeds;
    if (contains(limits, InputLimit::sysRqEndsPrograms)) {
        deeds.emplace_back("close every program");
    }
    if (contains(limits, InputLimit::sysRqRestarts)) {
        deeds.emplace_back("restart this computer");
    }
    if (contains(limits, InputLimit::sysRqStopsSaving)) {
        deeds.emplace_back("keep everything from being saved");
    }
    if (deeds.empty()) {
        return {};
    }
    std::string sentence = "Alt and Print Screen together with another key can still " + deeds.front();
    for (std::size_t i = 1; i < deeds.size(); ++i) {
        sentence += (i + 1 == deeds.size() ? " or " : ", ") + deeds[i];
    }
    return sentence + ".";
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
    if (auto sentence = sentenceAboutSysRq(limits); !sentence.empty()) {
        sentences.push_back(std::move(sentence));
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
