#include "ui/text/SessionFace.h"

#include "ui/text/TypedTextSamples.test.h"

#include <QFontDatabase>
#include <QPainterPath>
#include <QRawFont>

namespace tapalong {
namespace {

class SessionFaceTest : public samples::WithFonts {
protected:
    /// How thick a stem is, in ems: a capital I is nothing else in these faces.
    static double stem() {
        const QRawFont font = QRawFont::fromFont(SessionFace(100).font());
        const auto glyphs = font.glyphIndexesForString(QStringLiteral("I"));
        return font.pathForGlyph(glyphs.constFirst()).boundingRect().width() / 100;
    }
};

TEST_F(SessionFaceTest, StemsAreOfMediumWeightWhicheverRoundedFaceThereIs) {
    const bool isFallbackExpected = qEnvironmentVariableIsSet("FONTCONFIG_FILE");
    const auto family = QRawFont::fromFont(SessionFace(100).font()).familyName();
    EXPECT_EQ(family.toStdString(), isFallbackExpected ? "Comfortaa" : "Quicksand Medium");
    EXPECT_NEAR(stem(), 0.1, 0.01);
}

} // namespace
} // namespace tapalong
