#pragma once

#include "text/Character.h"

#include <cstddef>
#include <vector>

namespace tapalong {

class RandomSource;

/// Child-friendly emoji, and a random pick that avoids the latest ones. Keeps no state of its own.
class EmojiPool {
public:
    EmojiPool() = delete;

    [[nodiscard]] static const std::vector<Character>& animals();
    [[nodiscard]] static const std::vector<Character>& food();
    [[nodiscard]] static const std::vector<Character>& nature();
    [[nodiscard]] static const std::vector<Character>& vehicles();
    [[nodiscard]] static const std::vector<Character>& things();
    /// The five lists one after the other. Made once.
    [[nodiscard]] static const std::vector<Character>& all();
    /// What function keys type: a list of its own, some of it in none of the five.
    [[nodiscard]] static const std::vector<Character>& sky();

    /// A uniformly random element of all().
    [[nodiscard]] static Character random(RandomSource& source);
    /// The same of any list; "⭐" when it is empty.
    [[nodiscard]] static Character random(const std::vector<Character>& pool, RandomSource& source);

    /// A random element that, where ten draws find one, is not in `recent`. It becomes the last of `recent`, whose
    /// oldest element goes when there are more than `windowSize` then: one element a call, however many there are.
    [[nodiscard]] static Character nextAvoiding(std::vector<Character>& recent, RandomSource& source,
                                                std::size_t windowSize = 8);
};

} // namespace tapalong
