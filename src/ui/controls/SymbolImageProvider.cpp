#include "ui/controls/SymbolImageProvider.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImageReader>
#include <QPainter>

namespace tapalong {

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString symbol = id.section('/', 0, 0);
    const QColor color('#' + id.section('/', 1, 1));
    QFile file(":/tapalong/symbols/" + symbol + ".svg");
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("no symbol of the name %s", qPrintable(symbol));
        return {};
    }
    QByteArray drawing = file.readAll().replace("currentColor", color.name().toLatin1());
    QBuffer buffer(&drawing);
    QImageReader reader(&buffer, "svg");
    if (requestedSize.isValid()) {
        reader.setScaledSize(requestedSize);
    }
    QImage image = reader.read();
    if (image.isNull()) {
        qWarning("symbol %s cannot be drawn: %s", qPrintable(symbol), qPrintable(reader.errorString()));
        return {};
    }
    if (color.alpha() < 255) {
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(image.rect(), QColor(0, 0, 0, color.alpha()));
    }
    *size = image.size();
    return image;
}

} // namespace tapalong
