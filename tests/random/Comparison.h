#pragma once

#include <optional>
#include <string>

namespace tapalong::testing {

class Model;
class SimulatedApplication;

/// The first respect in which the application is not what the model says; none when it is.
[[nodiscard]] std::optional<std::string> differenceBetween(SimulatedApplication& application, const Model& model);

} // namespace tapalong::testing
