#pragma once

#include <atomic>
#include <cstdint>

namespace tapalong::test {

/// What a test and the program that it lets die share: one page of a file, mapped by both. The test's own view of it is
/// in fault_point.py, and knows these fields by their order.
struct FaultPoint {
    enum class Kind : std::uint32_t {
        none,
        killed,          ///< SIGKILL
        brokenMemory,    ///< a write to where nothing is
        stopped,         ///< SIGSTOP
        toolkitIsCut,    ///< the toolkit's connection to the X server breaks, the first that the program opened
        weAreCut,        ///< our own does, the second
        starved,         ///< from here on the address space does not grow, and what is free of it is used up
        asksToTerminate, ///< SIGTERM
        asksToInterrupt, ///< SIGINT
        asksToHangUp,    ///< SIGHUP
        measured,        ///< no fault: says how much is allocated
    };

    std::atomic<std::uint32_t> pid;   ///< of the one process that counts: the first that was started with the file
    std::atomic<std::uint32_t> count; ///< calls so far by which something leaves the program through a socket
    std::atomic<std::uint32_t> at;    ///< the call before which `kind` happens; 0: never
    std::atomic<Kind> kind;
    std::atomic<std::uint32_t> reached;   ///< 1 from the moment at which it happens
    std::atomic<std::uint32_t> allocated; ///< bytes, once measured
    std::atomic<std::uint32_t> reachedAt; ///< milliseconds of the monotonic clock, the lowest 32 bits
};

} // namespace tapalong::test
