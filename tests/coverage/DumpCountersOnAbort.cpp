// Linked into every test of the coverage tree: a line that ends the program has run too, but abort() leaves without
// writing the counters of executed lines, so that every line which a death test proves would be reported as never run.
#include <csignal>

// The compiler's own, declared here because not every version's <gcov.h> declares it for C++.
extern "C" void __gcov_dump();

namespace {

void dumpCounters(int) {
    __gcov_dump();
}

[[maybe_unused]] const auto installed = std::signal(SIGABRT, dumpCounters);

} // namespace
