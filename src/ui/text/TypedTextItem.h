#pragma once

#include "session/TypedContent.h"

#include <QBasicTimer>
#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <utility>
#include <vector>

namespace tapalong {

class TypedTextLayout;
struct VisibleLine;

/// Draws typed characters as one wrapping paragraph as wide as the item, with the cursor at its end. Only the lines in
/// the viewport have scene nodes, and only they are laid out at once. Animates nothing.
class TypedTextItem : public QQuickItem {
    Q_OBJECT
    QML_ANONYMOUS

    /// The part of the item that can be seen; all of it while the height is not positive.
    Q_PROPERTY(double viewportY READ viewportY WRITE setViewportY FINAL)
    Q_PROPERTY(double viewportHeight READ viewportHeight WRITE setViewportHeight FINAL)

public:
    explicit TypedTextItem(QQuickItem* parent = nullptr);
    ~TypedTextItem() override;

    void setFontSize(double points);
    void setShowCursor(bool show);
    void setCursorVisible(bool visible);
    /// Of the cursor and of characters in the desktop's own text colour.
    void setPrimaryColor(const QColor& color);
    [[nodiscard]] double viewportY() const { return m_viewportY; }
    void setViewportY(double y);
    [[nodiscard]] double viewportHeight() const { return m_viewportHeight; }
    void setViewportHeight(double height);

    /// What to show, null for nothing. It must outlive the item or the next call, and is read again at each refresh
    /// and before each frame.
    void setCharacters(const TypedContent* characters);
    /// Brings the lines, and with them the implicit height, up to date at once.
    void refresh();

    /// All of the text; long, so made only when somebody asks.
    [[nodiscard]] QString text() const;
    [[nodiscard]] const TypedTextLayout& layout() const { return *m_layout; }

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void timerEvent(QTimerEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& value) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;

private:
    void adopt();
    void redraw();
    [[nodiscard]] std::pair<std::size_t, std::size_t> linesInViewport() const;

    const std::unique_ptr<TypedTextLayout> m_layout;
    const TypedContent* m_characters = nullptr;
    std::vector<VisibleLine> m_visible;
    double m_fontSize = 72;
    bool m_showCursor = false;
    bool m_cursorVisible = true;
    QColor m_primary = Qt::black;
    double m_viewportY = 0;
    double m_viewportHeight = 0;
    QBasicTimer m_rest; ///< runs while there are lines to lay out that nobody sees
};

} // namespace tapalong
