#pragma once

#include <QQuickPaintedItem>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// A rounded bar whose colours run from left to right. Painted, because the software renderer leaves the corners of
/// rectangles with a gradient rough.
class RainbowBar : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY lookChanged FINAL)      ///< points
    Q_PROPERTY(QStringList colors MEMBER m_colors NOTIFY lookChanged FINAL) ///< as #rrggbb, equally far apart

public:
    explicit RainbowBar(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void lookChanged();

private:
    double m_radius = 0;
    QStringList m_colors;
};

} // namespace tapalong
