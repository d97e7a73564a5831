#pragma once

#include <QQuickImageProvider>

namespace tapalong {

/// Our symbols in any colour, as in "image://symbol/lock.shield/ffffffff" (alpha first), and, without a colour, the
/// image assets in their own. The symbols are made of currentColor; recolouring them here needs no shader. The assets
/// come this way because the toolkit's own would load the plugins of every image format to find out which it is.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    static constexpr const char* name = "symbol";

    SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace tapalong
