#include "views/WrappingHStack.h"

#include "base/WhileAlive.h"

namespace tapalong {

namespace {

constexpr double blinkInterval = 0.6; // seconds between two flips

} // namespace

WrappingHStack::WrappingHStack(const Platform& platform) : m_platform(platform) {}

std::vector<WrappingHStack::Run> WrappingHStack::paragraph(const TypedContent& characters, double fontSize,
                                                           bool showCursor, bool cursorVisible) {
    std::vector<Run> runs;
    runs.reserve(characters.size() + 1);
    for (const auto& typed : characters) {
        if (typed.character.isLineBreak()) {
            runs.push_back({"\n"});
        } else {
            runs.push_back({std::string(typed.character.utf8()), typed.color, 1, font(fontSize)});
        }
    }
    if (showCursor) {
        // Seen or not, it takes its place: the text must not shift as it blinks.
        runs.push_back(
            {std::string(cursorGlyph), NamedColor::primary, cursorVisible ? cursorOpacity : 0, font(fontSize)});
    }
    return runs;
}

WrappingHStack::Font WrappingHStack::font(double fontSize) {
    return {fontSize, Weight::medium, Design::rounded};
}

double WrappingHStack::lineSpacing(double fontSize) {
    return fontSize * 0.3;
}

void WrappingHStack::onAppear() {
    m_blinkTimer = m_platform.timers.scheduledTimer(
        blinkInterval, Repeats::yes, weak_from_this(),
        whileAlive(weak_from_this(), [](WrappingHStack& self) { self.m_cursorVisible.set(!self.cursorVisible()); }));
}

void WrappingHStack::onDisappear() {
    if (m_blinkTimer) {
        m_platform.timers.invalidate(*m_blinkTimer);
        m_blinkTimer.reset();
    }
}

} // namespace tapalong
