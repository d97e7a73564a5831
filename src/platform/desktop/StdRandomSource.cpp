#include "platform/desktop/StdRandomSource.h"

#include "base/Fatal.h"

namespace tapalong {

StdRandomSource::StdRandomSource() {
    std::random_device system;
    std::seed_seq seed{system(), system(), system(), system()};
    m_engine.seed(seed);
}

std::uint64_t StdRandomSource::uniform(std::uint64_t bound) {
    verify(bound > 0, "a random number needs a positive bound");
    return std::uniform_int_distribution<std::uint64_t>(0, bound - 1)(m_engine);
}

} // namespace tapalong
