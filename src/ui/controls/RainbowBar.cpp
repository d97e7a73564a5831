#include "ui/controls/RainbowBar.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace tapalong {

RainbowBar::RainbowBar(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &RainbowBar::lookChanged, this, [this] { update(); });
}

void RainbowBar::paint(QPainter* painter) {
    QLinearGradient gradient(0, 0, width(), 0);
    const auto steps = static_cast<double>(std::max<qsizetype>(m_colors.size() - 1, 1));
    for (qsizetype i = 0; i < m_colors.size(); ++i) {
        gradient.setColorAt(static_cast<double>(i) / steps, QColor(m_colors[i]));
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(gradient);
    painter->drawRoundedRect(boundingRect(), m_radius, m_radius);
}

} // namespace tapalong
