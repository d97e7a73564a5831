#include "ui/session/CornerGlow.h"

#include <QPainter>
#include <QRadialGradient>

namespace tapalong {

CornerGlow::CornerGlow(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &CornerGlow::strengthChanged, this, [this] { update(); });
}

void CornerGlow::paint(QPainter* painter) {
    QRadialGradient light(boundingRect().center(), width() / 2);
    light.setColorAt(0, QColor::fromRgbF(1, 1, 1, static_cast<float>(m_strength)));
    light.setColorAt(1, QColor::fromRgbF(1, 1, 1, 0));
    painter->fillRect(boundingRect(), light);
}

} // namespace tapalong
