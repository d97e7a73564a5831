#pragma once

#include "ui/text/ShapedLine.h"

#include <cstdint>
#include <memory>

namespace tapalong {

/// One visible line, where it stands and what to draw.
struct VisibleLine {
    std::uint64_t identity;
    double top; ///< points
    std::shared_ptr<const ShapedLine> shaped;
};

} // namespace tapalong
