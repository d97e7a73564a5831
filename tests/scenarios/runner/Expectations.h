#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tapalong::testing {

class Player;

/// What is otherwise than the expectation says, readable; none when it holds. Throws ScriptError for an expectation
/// that cannot be understood.
[[nodiscard]] std::optional<std::string> differenceFrom(std::string_view expectation, Player& player);

} // namespace tapalong::testing
