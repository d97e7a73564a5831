#pragma once

#include "ui/text/GlyphPainter.h"
#include "ui/text/ImageCache.h"
#include "ui/text/SessionFace.h"
#include "ui/text/VisibleLine.h"

#include <QSGImageNode>
#include <QSGNode>
#include <QSGRectangleNode>
#include <QSGTexture>

#include <map>
#include <memory>
#include <vector>

class QQuickWindow;

namespace tapalong {

/// The scene of the visible lines: a picture for each piece, so that a key repaints its own piece alone. Equal pieces
/// share a picture, painted once. Lives where the scene is rendered. A transform node, although it moves nothing: the
/// software renderer remembers where things are only for such nodes, and would draw what is added later at the origin.
class TypedTextNode final : public QSGTransformNode {
public:
    struct Scene {
        QQuickWindow& window;
        const SessionFace& face;
        const EmojiArt& art;
        double emojiScale = 1;
        double pixelRatio = 1;
        QColor primary{};
        bool cursorVisible = true;
        QRectF viewport{}; ///< empty where it is not known
    };

    /// Bytes of pictures that are kept, on the screen or not: at the usual sizes the letters in all their colours, and
    /// the emoji of the last while.
    static constexpr std::size_t cacheBound = 4U << 20U;

    TypedTextNode();

    void show(const Scene& scene, const std::vector<VisibleLine>& lines);

private:
    struct Picture {
        std::shared_ptr<QSGTexture> texture; ///< null where there is nothing to see
        QPoint offset;
        QSize size;
    };

    struct ShownPiece {
        QByteArray key;
        Picture picture;
        QRectF rect;
        QSGImageNode* node = nullptr; ///< owned by the line's node
    };

    struct ShownLine {
        QSGTransformNode* node = nullptr; ///< owned by this node
        double top = -1;
        std::shared_ptr<const ShapedLine> shaped;
        std::vector<ShownPiece> pieces;
    };

    void forgetOtherLooks(const Scene& scene);
    void removeOtherLines(const std::vector<VisibleLine>& lines);
    void showLine(const Scene& scene, const VisibleLine& line);
    void showPiece(const Scene& scene, const LinePiece& piece, ShownLine& line, ShownPiece& shown);
    Picture picture(const Scene& scene, const LinePiece& piece, const QByteArray& key, double phase);
    void showCursor(const Scene& scene, const std::vector<VisibleLine>& lines);
    void drawCurtain(const Scene& scene);

    ImageCache<Picture> m_cache{cacheBound};
    std::map<std::uint64_t, ShownLine> m_lines;
    QSGRectangleNode* m_cursor = nullptr;  ///< owned by this node
    QSGRectangleNode* m_curtain = nullptr; ///< owned by this node
    double m_size = 0;
    double m_pixelRatio = 0;
    QColor m_primary;
};

} // namespace tapalong
