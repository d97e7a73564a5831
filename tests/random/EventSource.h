#pragma once

#include "random/Event.h"

#include <cstdint>
#include <random>
#include <vector>

namespace tapalong::testing {

class Model;

/// Makes up what happens next. The same seed and the same application give the same events.
class EventSource {
public:
    explicit EventSource(std::uint64_t seed) : m_engine(seed) {}

    /// `model` tells what is worth doing: nobody cancels an overlay that is not there.
    [[nodiscard]] Event next(const Model& model);

private:
    [[nodiscard]] std::uint64_t below(std::uint64_t bound);
    [[nodiscard]] bool oneIn(std::uint64_t count) { return below(count) == 0; }
    template <class List> [[nodiscard]] const auto& oneOf(const List& list);

    [[nodiscard]] Event::Kind nextKind(const Model& model);
    void fill(Event& event, const Model& model);
    void fillKey(Event& event, const Model& model);
    void fillSetting(Event& event);
    [[nodiscard]] Point somePoint(const Model& model);
    [[nodiscard]] ModifierFlags someFlags();
    [[nodiscard]] DefaultsValue someText();

    std::mt19937_64 m_engine;
    int m_deletesLeft = 0; ///< of a run that holds Delete
    int m_keysLeft = 0;    ///< of a run that only types, for long texts
};

} // namespace tapalong::testing
