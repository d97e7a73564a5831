#pragma once

#include "platform/InputLimits.h"

#include <string>
#include <vector>

namespace tapalong {

/// One plain sentence for the parent about each of these; two ends of one chord share theirs.
[[nodiscard]] std::vector<std::string> sentencesAbout(const std::vector<InputLimit>& limits);

} // namespace tapalong
