#pragma once

#include "platform/UserDefaults.h"
#include "scenarios/runner/SimulatedApplication.h"
#include "scenarios/runner/Words.h"

#include <string>
#include <string_view>
#include <utility>

namespace tapalong::testing {

/// "key = value": true and false are switches, digits whole numbers, digits with a point numbers, all else is text
/// (quotation marks around it make text of a number too).
[[nodiscard]] std::pair<std::string, DefaultsValue> parsedSetting(std::string_view text);
/// The other way round.
[[nodiscard]] std::string shown(const DefaultsValue& value);

[[nodiscard]] SimulatedApplication::Stored readSettings(const std::vector<Line>& lines);

/// The two sides of the first " = "; throws where there is none.
[[nodiscard]] std::pair<std::string, std::string> splitAtEquals(std::string_view text);

} // namespace tapalong::testing
