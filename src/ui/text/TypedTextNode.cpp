#include "ui/text/TypedTextNode.h"

#include "views/WrappingHStack.h"

#include <QMatrix4x4>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace tapalong {

namespace {

/// Below this size in pixels a letter's place is seen to a part of a pixel.
constexpr double finePlacingBelow = 48;
constexpr double phases = 4;

double onPixels(double points, double pixelRatio) {
    return std::round(points * pixelRatio) / pixelRatio;
}

} // namespace

TypedTextNode::TypedTextNode() = default;

void TypedTextNode::show(const Scene& scene, const std::vector<VisibleLine>& lines) {
    forgetOtherLooks(scene);
    removeOtherLines(lines);
    for (const VisibleLine& line : lines) {
        showLine(scene, line);
    }
    showCursor(scene, lines);
    drawCurtain(scene);
}

void TypedTextNode::forgetOtherLooks(const Scene& scene) {
    const bool same = m_size == scene.face.size() && m_pixelRatio == scene.pixelRatio && m_primary == scene.primary;
    if (same) {
        return;
    }
    removeOtherLines({});
    m_cache.clear();
    m_size = scene.face.size();
    m_pixelRatio = scene.pixelRatio;
    m_primary = scene.primary;
}

void TypedTextNode::removeOtherLines(const std::vector<VisibleLine>& lines) {
    std::set<std::uint64_t> wanted;
    for (const VisibleLine& line : lines) {
        wanted.insert(line.identity);
    }
    for (auto it = m_lines.begin(); it != m_lines.end();) {
        if (wanted.count(it->first) > 0) {
            ++it;
            continue;
        }
        removeChildNode(it->second.node);
        delete it->second.node;
        it = m_lines.erase(it);
    }
}

void TypedTextNode::showLine(const Scene& scene, const VisibleLine& line) {
    ShownLine& shown = m_lines[line.identity];
    if (shown.node == nullptr) {
        shown.node = new QSGTransformNode;
        prependChildNode(shown.node);
    }
    if (const double top = onPixels(line.top, scene.pixelRatio); std::exchange(shown.top, top) != top) {
        QMatrix4x4 matrix;
        matrix.translate(0, static_cast<float>(top));
        shown.node->setMatrix(matrix);
    }
    if (shown.shaped == line.shaped) {
        return;
    }
    shown.shaped = line.shaped;
    const auto& pieces = line.shaped->pieces;
    for (std::size_t i = pieces.size(); i < shown.pieces.size(); ++i) {
        delete shown.pieces[i].node; // leaves its parent by itself
    }
    shown.pieces.resize(pieces.size());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        showPiece(scene, pieces[i], shown, shown.pieces[i]);
    }
}

void TypedTextNode::showPiece(const Scene& scene, const LinePiece& piece, ShownLine& line, ShownPiece& shown) {
    const double x = piece.x * scene.pixelRatio;
    const bool isFine = piece.emoji.isEmpty() && scene.face.size() * scene.pixelRatio < finePlacingBelow;
    const double placed = isFine ? std::round(x * phases) / phases : std::round(x);
    const double pixel = std::floor(placed);
    const double phase = placed - pixel;

    QByteArray key = piece.key;
    key.append(static_cast<char>('0' + static_cast<int>(phase * phases)));
    if (shown.key != key) {
        shown.key = key;
        shown.picture = picture(scene, piece, key, phase);
        if (shown.picture.texture == nullptr) {
            delete std::exchange(shown.node, nullptr);
            return;
        }
        if (shown.node == nullptr) {
            shown.node = scene.window.createImageNode();
            shown.node->setOwnsTexture(false);
            // One pixel of the picture is one of the screen.
            shown.node->setFiltering(QSGTexture::Nearest);
        }
        shown.node->setTexture(shown.picture.texture.get());
        shown.node->setSourceRect(QRectF(QPointF(), shown.picture.size));
        shown.rect = {};
    }
    if (shown.node == nullptr) {
        return;
    }
    const double baseline = std::round(scene.face.ascent() * scene.pixelRatio);
    const QRectF rect((pixel + shown.picture.offset.x()) / scene.pixelRatio,
                      (baseline + shown.picture.offset.y()) / scene.pixelRatio,
                      shown.picture.size.width() / scene.pixelRatio, shown.picture.size.height() / scene.pixelRatio);
    if (std::exchange(shown.rect, rect) != rect) {
        shown.node->setRect(rect);
    }
    // Not before it has all it needs: the renderer looks at once.
    if (shown.node->parent() == nullptr) {
        line.node->appendChildNode(shown.node);
    }
}

TypedTextNode::Picture TypedTextNode::picture(const Scene& scene, const LinePiece& piece, const QByteArray& key,
                                              double phase) {
    if (const Picture* known = m_cache.find(key)) {
        return *known;
    }
    Paint paint;
    paint.unit = scene.face.scale() * scene.pixelRatio;
    paint.emojiUnit = scene.emojiScale * scene.pixelRatio;
    paint.phase = phase;
    paint.primary = scene.primary;
    const PaintedPiece painted = paintPiece(piece, paint, scene.art);
    Picture made{nullptr, painted.offset, painted.image.size()};
    if (!painted.image.isNull()) {
        const QQuickWindow::CreateTextureOptions options{QQuickWindow::TextureHasAlphaChannel,
                                                         QQuickWindow::TextureCanUseAtlas};
        made.texture.reset(scene.window.createTextureFromImage(painted.image, options));
    }
    return m_cache.insert(key, std::move(made), static_cast<std::size_t>(painted.image.sizeInBytes()) + key.size());
}

void TypedTextNode::showCursor(const Scene& scene, const std::vector<VisibleLine>& lines) {
    QRectF rect;
    if (!lines.empty() && lines.back().shaped->cursorX) {
        // At the end of its advance, so that it stands off the letter before it.
        const double space = scene.face.cursorAdvance() - scene.face.cursorWidth();
        const double x = onPixels(*lines.back().shaped->cursorX + space, scene.pixelRatio);
        const double top = onPixels(lines.back().top, scene.pixelRatio);
        rect = QRectF(x, top, onPixels(std::max(scene.face.cursorWidth(), 1.0), scene.pixelRatio),
                      onPixels(scene.face.lineHeight(), scene.pixelRatio));
    }
    if (m_cursor == nullptr) {
        m_cursor = scene.window.createRectangleNode();
        m_cursor->setColor(Qt::transparent);
        appendChildNode(m_cursor);
    }
    if (m_cursor->rect() != rect) {
        m_cursor->setRect(rect);
    }
    QColor color = scene.primary;
    color.setAlphaF(scene.cursorVisible ? static_cast<float>(WrappingHStack::cursorOpacity) : 0.0F);
    if (m_cursor->color() != color) {
        m_cursor->setColor(color);
    }
}

/// Nothing to see, in front of all. When the text is scrolled it is what tells the software renderer that the whole
/// viewport is to be painted anew, before that adds up some hundred moved pictures to a region of as many rectangles:
/// the adding up, and painting through such a region, cost more than the pictures.
void TypedTextNode::drawCurtain(const Scene& scene) {
    if (scene.window.rendererInterface()->graphicsApi() != QSGRendererInterface::Software) {
        return;
    }
    if (m_curtain == nullptr) {
        m_curtain = scene.window.createRectangleNode();
        m_curtain->setColor(Qt::transparent);
        appendChildNode(m_curtain);
    }
    if (m_curtain->rect() != scene.viewport) {
        m_curtain->setRect(scene.viewport);
    }
}

} // namespace tapalong
