#include "settings/ScreenCorner.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tapalong {
namespace {

TEST(ScreenCorner, CornersComeInPickerOrderWithTheirNames) {
    std::vector<std::string> raws;
    std::vector<std::string> labels;
    for (const auto corner : allCorners) {
        raws.emplace_back(rawValue(corner));
        labels.emplace_back(label(corner));
    }
    EXPECT_EQ(raws, (std::vector<std::string>{"topLeft", "topRight", "bottomLeft", "bottomRight"}));
    EXPECT_EQ(labels, (std::vector<std::string>{"Top Left", "Top Right", "Bottom Left", "Bottom Right"}));
}

TEST(ScreenCorner, EveryRawValueReadsBack) {
    for (const auto corner : allCorners) {
        EXPECT_EQ(cornerFromRawValue(rawValue(corner)), corner);
    }
}

TEST(ScreenCorner, RawValuesAreCaseSensitive) {
    EXPECT_EQ(cornerFromRawValue("TopLeft"), std::nullopt);
    EXPECT_EQ(cornerFromRawValue("Top Left"), std::nullopt);
    EXPECT_EQ(cornerFromRawValue(""), std::nullopt);
}

} // namespace
} // namespace tapalong
