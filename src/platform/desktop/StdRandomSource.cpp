#include "platform/desktop/StdRandomSource.h"

#include "base/Fatal.h"

namespace tapalong {

namespace {

std::mt19937_64 seededBySystem() {
    std::random_device system;
    std::seed_seq seed{system(), system(), system(), system()};
    return std::mt19937_64(seed);
}

} // namespace

StdRandomSource::StdRandomSource() : m_engine(seededBySystem()) {}

std::uint64_t StdRandomSource::uniform(std::uint64_t bound) {
    verify(bound > 0, "a random number needs a positive bound");
    return std::uniform_int_distribution<std::uint64_t>(0, bound - 1)(m_engine);
}

} // namespace tapalong
