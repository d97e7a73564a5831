// What is on the screen.

#include "random/Model.h"
#include "session/EmojiPool.h"

#include <algorithm>
#include <array>

namespace tapalong::testing {

namespace {

constexpr std::array<const char*, 15> sky{"🌙",       "⭐",    "🌟", "☀\uFE0F", "🌈", "☁\uFE0F", "🌤", "⚡",
                                          "❄\uFE0F", "🪐", "🌍", "🌕",       "💫", "✨",       "🌊"};

struct PaletteEntry {
    SrgbColor onDark;
    double factorOnLight;
};

constexpr std::array<PaletteEntry, 9> paletteEntries{{{{0.93, 0.18, 0.18}, 0.72},
                                                      {{0.98, 0.45, 0.02}, 0.72},
                                                      {{0.99, 0.78, 0.05}, 0.55},
                                                      {{0.55, 0.86, 0.15}, 0.55},
                                                      {{0.18, 0.78, 0.25}, 0.72},
                                                      {{0.30, 0.78, 0.90}, 0.55},
                                                      {{0.20, 0.50, 0.92}, 0.85},
                                                      {{0.55, 0.32, 0.85}, 0.85},
                                                      {{0.70, 0.30, 0.75}, 0.85}}};

std::optional<SrgbColor> meaningOfHex(const std::string& text) {
    for (const auto& [known, color] : knownHexTexts()) {
        if (known == text) {
            return color;
        }
    }
    return std::nullopt;
}

/// Of the known colours, white and green are light.
bool isLight(const SrgbColor& color) {
    return color.green == 1;
}

} // namespace

void Model::handle(const Posted& posted, const Event& event) {
    using Meaning = KeyPress::Meaning;
    const bool isDelete = posted.press && posted.press->meaning == Meaning::deleteLast;
    const bool isSuppressed = !posted.emoji && !posted.press;
    if (!isDelete && !(isSuppressed && breaks(Broken::suppressedKeepsTheRun))) {
        deleteHeldSince.reset();
    }
    if (isSuppressed) {
        return;
    }
    if (posted.emoji) {
        append(drawEmoji(event));
    } else {
        switch (posted.press->meaning) {
        case Meaning::text:
        case Meaning::navigation:
        case Meaning::fixed:
            append(posted.press->character);
            break;
        case Meaning::space:
            append(" ");
            break;
        case Meaning::enter:
            append("\n");
            break;
        case Meaning::tab:
            for (int i = 0; i < 4; ++i) {
                append(" ");
            }
            break;
        case Meaning::deleteLast:
            deleteLast();
            break;
        case Meaning::celestial:
            append(sky.at(event.draws.front() % sky.size()));
            break;
        }
    }
    const bool silent = isDelete && breaks(Broken::deletesAreSilent);
    soundsPlayed += settings.soundEnabled && session->audible && !silent ? 1 : 0;
}

void Model::append(std::string text) {
    content.push_back({std::move(text), nextColor()});
    milestones.longestText = std::max<std::uint64_t>(milestones.longestText, content.size());
    if (static_cast<std::int64_t>(content.size()) > settings.maxCharacters) {
        trim();
    }
}

void Model::trim() {
    const std::size_t count = content.size();
    std::size_t drop = count * 30 / 100;
    const std::size_t searchEnd = std::min(drop + count / 10, count);
    for (std::size_t i = drop; i < searchEnd && !breaks(Broken::trimIgnoresLineBreaks); ++i) {
        if (content[i].text == "\n") {
            drop = i + 1;
            ++milestones.trimsAtLineBreaks;
            break;
        }
    }
    ++milestones.trims;
    content.erase(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(drop));
}

void Model::deleteLast() {
    if (!deleteHeldSince) {
        deleteHeldSince = now;
    }
    const double enough = breaks(Broken::wipeAfterFourSeconds) ? 4.0 : 5.0;
    if (now - *deleteHeldSince >= enough) {
        milestones.wipes += content.empty() ? 0 : 1;
        content.clear();
        deleteHeldSince.reset();
    } else if (!content.empty()) {
        content.pop_back();
    }
}

std::string Model::drawEmoji(const Event& event) {
    constexpr std::size_t window = 8;
    const auto& pool = EmojiPool::all();
    std::uint64_t drawn = 0;
    bool fresh = false;
    for (const auto draw : event.draws) {
        drawn = draw % pool.size();
        fresh = std::find(recentEmoji.begin(), recentEmoji.end(), drawn) == recentEmoji.end();
        if (fresh || breaks(Broken::emojiRepeat)) {
            break;
        }
    }
    milestones.tenthDraws += fresh ? 0 : 1;
    recentEmoji.push_back(drawn);
    if (recentEmoji.size() > window) {
        recentEmoji.erase(recentEmoji.begin());
    }
    return pool[drawn].utf8();
}

Color Model::nextColor() {
    if (!settings.rainbowMode) {
        if (settings.useSystemAppearance) {
            return NamedColor::primary;
        }
        const auto custom = meaningOfHex(settings.fgHex);
        return custom ? Color(*custom) : Color(NamedColor::white);
    }
    const auto custom = meaningOfHex(settings.bgHex);
    const bool light = settings.useSystemAppearance ? !dark : custom && isLight(*custom);
    const auto& entry = paletteEntries.at(static_cast<std::size_t>(palette++ % 9));
    const double factor = light ? entry.factorOnLight : 1;
    return SrgbColor{entry.onDark.red * factor, entry.onDark.green * factor, entry.onDark.blue * factor};
}

} // namespace tapalong::testing
