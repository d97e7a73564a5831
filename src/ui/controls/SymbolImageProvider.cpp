#include "ui/controls/SymbolImageProvider.h"

#include <QBuffer>
#include <QColor>
#include <QFile>
#include <QImageReader>
#include <QPainter>

namespace tapalong {

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString picture = id.section('/', 0, 0);
    const QString argb = id.section('/', 1, 1);
    const QColor color = argb.isEmpty() ? QColor(Qt::black) : QColor('#' + argb);
    QFile file((argb.isEmpty() ? ":/tapalong/" : ":/tapalong/symbols/") + picture + ".svg");
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("no picture of the name %s", qPrintable(picture));
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
        qWarning("picture %s cannot be drawn: %s", qPrintable(picture), qPrintable(reader.errorString()));
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
