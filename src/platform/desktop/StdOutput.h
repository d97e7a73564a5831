#pragma once

#include "platform/StandardOutput.h"

namespace tapalong {

/// The process's standard output, flushed with each line.
class StdOutput final : public StandardOutput {
public:
    void print(std::string_view line) override;
};

} // namespace tapalong
