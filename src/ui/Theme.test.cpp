#include "ui/Theme.h"

#include "ui/Conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tapalong {

namespace {

double luminance(const QColor& color) {
    const auto linear = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] =
        std::minmax({luminance(one), luminance(other)}); // a list: copies, not references to temporaries
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

TEST(Theme, TextIsReadableOnEverythingThatItStandsOn) {
    for (const bool dark : {false, true}) {
        const auto& colors = Theme::colors(dark);
        for (const auto& face : {colors.window, colors.card, colors.control, colors.controlPressed, colors.field}) {
            EXPECT_GE(contrast(colors.text, face), 7) << dark << face.name().toStdString();
        }
        EXPECT_GE(contrast(colors.secondary, colors.window), 4.5);
        EXPECT_GE(contrast(colors.secondary, colors.card), 4.5);
        EXPECT_GE(contrast(colors.warningInk, colors.warningFill), 4.5);
        EXPECT_GE(contrast(colors.accent, colors.card), 3);
    }
}

TEST(Theme, FollowsDark) {
    Theme theme;
    int changes = 0;
    QObject::connect(&theme, &Theme::changed, [&changes] { ++changes; });
    EXPECT_EQ(theme.window(), QColor(0xf3f3f7));
    theme.setDark(true);
    theme.setDark(true);
    EXPECT_EQ(theme.window(), QColor(0x1d1d24));
    EXPECT_EQ(changes, 1);
}

TEST(Conversion, NamedColorsFollowTheDesktop) {
    EXPECT_EQ(toQColor(NamedColor::primary, true), Theme::colors(true).text);
    EXPECT_EQ(toQColor(NamedColor::primary, false), Theme::colors(false).text);
    EXPECT_EQ(toQColor(NamedColor::windowBackground, false), Theme::colors(false).window);
    EXPECT_EQ(toQColor(NamedColor::white, true), QColor(Qt::white));
    EXPECT_EQ(toQColor(NamedColor::black, false), QColor(Qt::black));
}

TEST(Conversion, PickedColorIsStoredAsPicked) {
    for (int grey = 0; grey < 256; ++grey) {
        const QColor picked(grey, 255 - grey, grey);
        EXPECT_EQ(fromQColor(picked).hexString(), picked.name().toUpper().toStdString());
        EXPECT_EQ(toQColor(Color::fromHex(picked.name().toStdString()).value(), false), picked);
    }
}

} // namespace tapalong
