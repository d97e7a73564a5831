#pragma once

#include <string>
#include <vector>

namespace tapalong::simulated {

/// Everything the application did to the simulated desktop, one line for each call, in order.
class EffectLog {
public:
    void record(std::string effect) { m_effects.push_back(std::move(effect)); }

    [[nodiscard]] const std::vector<std::string>& all() const { return m_effects; }
    void clear() { m_effects.clear(); }

private:
    std::vector<std::string> m_effects;
};

} // namespace tapalong::simulated
