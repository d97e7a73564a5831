#pragma once

#include <string>
#include <string_view>

namespace tapalong::testing {

class Player;

/// What the application and its desktop are like, by the name that expectations use. Throws ScriptError for a name
/// that is not known.
[[nodiscard]] std::string reading(std::string_view what, Player& player);

} // namespace tapalong::testing
