#pragma once

#include "platform/InputLimits.h"

#include <functional>
#include <set>
#include <vector>

namespace tapalong {

/// The limits of the running program's computer. Whoever can find one out looks when it is asked to, and keeps its
/// answer here.
class LimitBoard final : public InputLimits {
public:
    [[nodiscard]] std::vector<InputLimit> openLimits() const override;
    void lookAgain() override;

    /// `look` runs at every look from now on. Its object outlives the looks.
    void whenLooking(std::function<void()> look) { m_looks.push_back(std::move(look)); }
    void set(InputLimit limit, bool isOpen);

private:
    std::vector<std::function<void()>> m_looks;
    std::set<InputLimit> m_open;
};

} // namespace tapalong
