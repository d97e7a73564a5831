#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// The soft shadow around a rounded rectangle: the item's own area is the rectangle grown by `spread` on every side.
/// Blurred by the processor and painted once per size, because not every renderer has shaders.
class PanelShadow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double spread MEMBER m_spread NOTIFY shapeChanged FINAL)             ///< points
    Q_PROPERTY(double cornerRadius MEMBER m_cornerRadius NOTIFY shapeChanged FINAL) ///< points
    Q_PROPERTY(double strength MEMBER m_strength NOTIFY shapeChanged FINAL)         ///< of the black, 0...1

public:
    explicit PanelShadow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
    [[nodiscard]] bool contains(const QPointF&) const override { return false; }

signals:
    void shapeChanged();

private:
    [[nodiscard]] QImage render() const;

    double m_spread = 0;
    double m_cornerRadius = 0;
    double m_strength = 0;
};

} // namespace tapalong
