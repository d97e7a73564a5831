#include "ui/Conversion.h"

#include "base/Fatal.h"
#include "ui/Theme.h"

#include <QCoreApplication>

namespace tapalong {

QColor toQColor(const Color& color, bool dark) {
    if (const auto srgb = color.srgb()) {
        return QColor::fromRgbF(static_cast<float>(srgb->red), static_cast<float>(srgb->green),
                                static_cast<float>(srgb->blue), static_cast<float>(srgb->opacity));
    }
    const auto colors = Theme::colors(dark);
    switch (color.named().value()) {
    case NamedColor::primary:
        return colors.text;
    case NamedColor::windowBackground:
        return colors.window;
    case NamedColor::white:
        return Qt::white;
    case NamedColor::black:
        return Qt::black;
    }
    fatal("a named colour must be one of the four");
}

Color fromQColor(const QColor& color) {
    // Not redF() and its like: those are single floats, and hexString() cuts.
    return SrgbColor{color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0, color.alpha() / 255.0};
}

QString translated(std::string_view text) {
    return QCoreApplication::translate("Tapalong", std::string(text).c_str());
}

QString toQml(std::string_view value) {
    return QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
}

QStringList toQml(const std::vector<std::string>& values) {
    QStringList list;
    for (const auto& value : values) {
        list.append(QString::fromStdString(value));
    }
    return list;
}

std::string fromQml(const QString& value) {
    return value.toStdString();
}

} // namespace tapalong
