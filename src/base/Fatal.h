#pragma once

#include <source_location>
#include <string_view>

namespace tapalong {

/// Stops the program because of a programming error: writes one line with the source location to standard error,
/// then calls abort(). On in every build, unlike assert(): a half-locked desktop is worse than a dead program, and
/// everything we hold of the desktop goes with the process.
[[noreturn]] void fatal(std::string_view whatMustHold, std::source_location where = std::source_location::current());

/// Calls fatal() unless `holds`.
inline void verify(bool holds, std::string_view whatMustHold,
                   std::source_location where = std::source_location::current()) {
    if (!holds) {
        fatal(whatMustHold, where);
    }
}

} // namespace tapalong
