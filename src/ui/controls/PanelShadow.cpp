#include "ui/controls/PanelShadow.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tapalong {

namespace {

constexpr double resolution = 0.5; // of the blurred image: a shadow has no detail, and a quarter of the dots cost less
constexpr int passes = 3;          // of a box blur; three come close to a bell curve

/// Replaces each of `count` values, `stride` apart, by the mean of those up to `reach` away.
void blurLine(uchar* first, qsizetype stride, int count, int reach, std::vector<int>& sums) {
    sums.assign(static_cast<std::size_t>(count) + 1, 0);
    for (int i = 0; i < count; ++i) {
        sums[static_cast<std::size_t>(i) + 1] = sums[static_cast<std::size_t>(i)] + first[i * stride];
    }
    for (int i = 0; i < count; ++i) {
        const int from = std::max(0, i - reach);
        const int to = std::min(count, i + reach + 1);
        const int sum = sums[static_cast<std::size_t>(to)] - sums[static_cast<std::size_t>(from)];
        first[i * stride] = static_cast<uchar>(sum / (2 * reach + 1));
    }
}

void blur(QImage& image, int reach) {
    std::vector<int> sums;
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < image.height(); ++y) {
            blurLine(image.scanLine(y), 1, image.width(), reach, sums);
        }
        for (int x = 0; x < image.width(); ++x) {
            blurLine(image.bits() + x, image.bytesPerLine(), image.height(), reach, sums);
        }
    }
}

} // namespace

PanelShadow::PanelShadow(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &PanelShadow::shapeChanged, this, [this] { update(); });
}

QImage PanelShadow::render() const {
    QImage shape((QSizeF(width(), height()) * resolution).toSize(), QImage::Format_Alpha8);
    shape.fill(0);
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(m_strength)));
    painter.scale(resolution, resolution);
    painter.drawRoundedRect(boundingRect().adjusted(m_spread, m_spread, -m_spread, -m_spread), m_cornerRadius,
                            m_cornerRadius);
    painter.end();
    blur(shape, std::max(1, static_cast<int>(m_spread * resolution / passes)));
    return shape;
}

void PanelShadow::paint(QPainter* painter) {
    if (width() >= 1 && height() >= 1) {
        // None under the rectangle, which may be translucent; up to under its edge, lest there be a gap.
        const double inside = m_spread + 1;
        QPainterPath outside;
        outside.addRect(boundingRect());
        outside.addRoundedRect(boundingRect().adjusted(inside, inside, -inside, -inside), m_cornerRadius,
                               m_cornerRadius);
        painter->setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
        painter->setClipPath(outside);
        painter->drawImage(boundingRect(), render());
    }
}

} // namespace tapalong
