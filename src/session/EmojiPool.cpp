#include "session/EmojiPool.h"

#include "platform/RandomSource.h"

#include <algorithm>
#include <initializer_list>

namespace tapalong {

namespace {

std::vector<Character> characters(std::initializer_list<const char*> texts) {
    std::vector<Character> list;
    list.reserve(texts.size());
    for (const char* text : texts) {
        list.emplace_back(text);
    }
    return list;
}

} // namespace

const std::vector<Character>& EmojiPool::animals() {
    static const auto list = characters(
        {"🐶", "🐱", "🐸", "🐻", "🐼", "🐨", "🐰", "🦊", "🐷", "🐮", "🐔", "🐧", "🐢", "🐙", "🦋", "🐝", "🐠", "🐬", "🦁", "🐘"});
    return list;
}

const std::vector<Character>& EmojiPool::food() {
    static const auto list =
        characters({"🍎", "🍌", "🍊", "🍓", "🍉", "🍇", "🥕", "🌽", "🧁", "🍪", "🍕", "🍩", "🍦", "🥐", "🍑"});
    return list;
}

const std::vector<Character>& EmojiPool::nature() {
    static const auto list =
        characters({"🌈", "🌸", "🌻", "⭐", "🌙", "☀\uFE0F", "🌊", "❄\uFE0F", "🍀", "🌺", "🌷", "🍄", "🌵", "🪻", "🌲"});
    return list;
}

const std::vector<Character>& EmojiPool::vehicles() {
    static const auto list = characters({"🚗", "🚀", "🚂", "🚌", "✈\uFE0F", "🚁", "⛵", "🚲", "🏎\uFE0F", "🛸"});
    return list;
}

const std::vector<Character>& EmojiPool::things() {
    static const auto list =
        characters({"⚽", "🎈", "🎵", "🎨", "🧸", "🪁", "🎪", "🏠", "🌍", "🎁", "🎶", "🔔", "💎", "🏐", "🥁"});
    return list;
}

const std::vector<Character>& EmojiPool::all() {
    static const auto list = [] {
        std::vector<Character> joined;
        for (const auto* category : {&animals(), &food(), &nature(), &vehicles(), &things()}) {
            joined.insert(joined.end(), category->begin(), category->end());
        }
        return joined;
    }();
    return list;
}

const std::vector<Character>& EmojiPool::sky() {
    static const auto list =
        characters({"🌙", "⭐", "🌟", "☀\uFE0F", "🌈", "☁\uFE0F", "🌤", "⚡", "❄\uFE0F", "🪐", "🌍", "🌕", "💫", "✨", "🌊"});
    return list;
}

Character EmojiPool::random(RandomSource& source) {
    return random(all(), source);
}

Character EmojiPool::random(const std::vector<Character>& pool, RandomSource& source) {
    return pool.empty() ? Character("⭐") : pool[static_cast<std::size_t>(source.uniform(pool.size()))];
}

Character EmojiPool::nextAvoiding(std::vector<Character>& recent, RandomSource& source, std::size_t windowSize) {
    constexpr int maxAttempts = 10;
    Character candidate = random(source);
    for (int attempts = 1; attempts < maxAttempts && std::find(recent.begin(), recent.end(), candidate) != recent.end();
         ++attempts) {
        candidate = random(source);
    }
    recent.push_back(candidate);
    if (recent.size() > windowSize) {
        recent.erase(recent.begin());
    }
    return candidate;
}

} // namespace tapalong
