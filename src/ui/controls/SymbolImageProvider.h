#pragma once

#include <QQuickImageProvider>

namespace tapalong {

/// Our symbols in any colour, as in "image://symbol/lock.shield/ffffffff" (alpha first). The drawings are made of
/// currentColor; recolouring them here needs no shader.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    static constexpr const char* name = "symbol";

    SymbolImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace tapalong
