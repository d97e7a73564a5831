#include "ui/text/TypedTextItem.h"

#include "session/TypedCharacter.h"
#include "ui/text/TypedTextAccessible.h"
#include "ui/text/TypedTextLayout.h"
#include "ui/text/TypedTextNode.h"
#include "ui/text/VisibleLine.h"

#include <QQuickWindow>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tapalong {

namespace {

const TypedContent nothing;

} // namespace

TypedTextItem::TypedTextItem(QQuickItem* parent) : QQuickItem(parent), m_layout(std::make_unique<TypedTextLayout>()) {
    setFlag(ItemHasContents);
    installTypedTextAccessible();
}

TypedTextItem::~TypedTextItem() = default;

void TypedTextItem::setFontSize(double points) {
    if (std::exchange(m_fontSize, points) != points) {
        refresh();
    }
}

void TypedTextItem::setShowCursor(bool show) {
    if (std::exchange(m_showCursor, show) != show) {
        refresh();
    }
}

void TypedTextItem::setCursorVisible(bool visible) {
    if (std::exchange(m_cursorVisible, visible) != visible) {
        if (m_showCursor) {
            update();
        }
    }
}

void TypedTextItem::setPrimaryColor(const QColor& color) {
    if (std::exchange(m_primary, color) != color) {
        update();
    }
}

void TypedTextItem::setViewportY(double y) {
    if (std::exchange(m_viewportY, y) != y) {
        redraw();
    }
}

void TypedTextItem::setViewportHeight(double height) {
    if (std::exchange(m_viewportHeight, height) != height) {
        redraw();
    }
}

void TypedTextItem::setCharacters(const TypedContent* characters) {
    m_characters = characters;
    refresh();
}

void TypedTextItem::refresh() {
    adopt();
    redraw();
}

/// Asks for both at once: an update that is asked for by the polishing would be a frame of its own.
void TypedTextItem::redraw() {
    polish();
    update();
}

void TypedTextItem::adopt() {
    m_layout->setFontSize(m_fontSize);
    m_layout->setWidth(std::max(0.0, width()));
    m_layout->setCursorShown(m_showCursor);
    // A line is higher than its font's size.
    m_layout->setLinesInView(
        m_viewportHeight > 0 ? static_cast<std::size_t>(std::ceil(m_viewportHeight / m_fontSize)) + 1 : 0);
    m_layout->update(m_characters != nullptr ? *m_characters : nothing);
    setImplicitHeight(m_layout->height());
}

QString TypedTextItem::text() const {
    std::string utf8;
    if (m_characters != nullptr) {
        for (const TypedCharacter& typed : *m_characters) {
            utf8 += typed.character.utf8();
        }
    }
    return QString::fromStdString(utf8);
}

void TypedTextItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width()) {
        refresh();
    }
}

void TypedTextItem::itemChange(ItemChange change, const ItemChangeData& value) {
    QQuickItem::itemChange(change, value);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        redraw();
    }
}

void TypedTextItem::updatePolish() {
    // The characters may have changed since the last refresh, and the lines refer to them.
    adopt();
    if (linesInViewport().first < m_layout->firstLineOfEnd()) {
        m_layout->complete();
        setImplicitHeight(m_layout->height());
    }
    const auto [first, last] = linesInViewport();
    std::vector<VisibleLine> visible; // beside the old ones, which keep what was shaped
    for (std::size_t i = first; i < last; ++i) {
        visible.push_back({m_layout->identity(i), static_cast<double>(i) * m_layout->pitch(), m_layout->shaped(i)});
    }
    m_visible = std::move(visible);
    if (!m_layout->isComplete()) {
        m_rest.start(0, this);
    }
}

/// From the first to before the last.
std::pair<std::size_t, std::size_t> TypedTextItem::linesInViewport() const {
    if (m_viewportHeight <= 0) {
        return {0, m_layout->lineCount()};
    }
    const auto count = static_cast<double>(m_layout->lineCount());
    const double pitch = m_layout->pitch();
    return {static_cast<std::size_t>(std::clamp(std::floor(m_viewportY / pitch), 0.0, count)),
            static_cast<std::size_t>(std::clamp(std::ceil((m_viewportY + m_viewportHeight) / pitch), 0.0, count))};
}

/// A few lines, and events between them.
void TypedTextItem::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_rest.timerId()) {
        QQuickItem::timerEvent(event);
        return;
    }
    adopt();
    if (m_layout->isComplete()) {
        m_rest.stop();
        redraw();
    }
}

QSGNode* TypedTextItem::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* /*data*/) {
    auto* node = static_cast<TypedTextNode*>(oldNode);
    if (node == nullptr) {
        node = new TypedTextNode;
    }
    TypedTextNode::Scene scene{*window(), m_layout->face(), m_layout->emojiArt()};
    scene.emojiScale = m_layout->emojiScale();
    scene.pixelRatio = window()->effectiveDevicePixelRatio();
    scene.primary = m_primary;
    scene.cursorVisible = m_cursorVisible;
    if (m_viewportHeight > 0) {
        scene.viewport = QRectF(0, m_viewportY, width(), m_viewportHeight);
    }
    node->show(scene, m_visible);
    return node;
}

} // namespace tapalong
