#pragma once

#include <string_view>

namespace tapalong {

/// The property of the root window in which the guard of the server's keys writes what it has to put back, and the
/// selection that it owns while it lives. A note without an owner was left by a guard that was killed together with
/// its program.
constexpr std::string_view serverKeysNote = "_TAPALONG_SERVER_KEYS";

} // namespace tapalong
