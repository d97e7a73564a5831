#pragma once

#include <string_view>

namespace tapalong {

/// Where the few diagnostic lines go.
class StandardOutput {
public:
    virtual ~StandardOutput() = default;

    /// Writes `line` and a line end, at once.
    virtual void print(std::string_view line) = 0;
};

} // namespace tapalong
