#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tapalong {

/// White light that fades from the item's centre to its edges. Painted once, so that it needs no graphics processor.
/// Takes no pointer events.
class CornerGlow : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// Of the light at the centre, 0...1.
    Q_PROPERTY(double strength MEMBER m_strength NOTIFY strengthChanged FINAL)

public:
    explicit CornerGlow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;
    [[nodiscard]] bool contains(const QPointF&) const override { return false; }

signals:
    void strengthChanged();

private:
    double m_strength = 0;
};

} // namespace tapalong
