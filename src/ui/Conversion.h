#pragma once

#include "settings/Color.h"

#include <QColor>
#include <QString>
#include <QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace tapalong {

/// A colour as drawn: the named ones depend on whether the desktop is dark.
[[nodiscard]] QColor toQColor(const Color& color, bool dark);
[[nodiscard]] Color fromQColor(const QColor& color);

/// A text of the core in the user's language; the text is its own key.
[[nodiscard]] QString translated(std::string_view text);

[[nodiscard]] inline bool toQml(bool value) {
    return value;
}
[[nodiscard]] inline int toQml(int value) {
    return value;
}
[[nodiscard]] inline double toQml(double value) {
    return value;
}
[[nodiscard]] inline QString toQml(const QString& value) {
    return value;
}
[[nodiscard]] inline QColor toQml(const QColor& value) {
    return value;
}
[[nodiscard]] QString toQml(std::string_view value);
[[nodiscard]] QStringList toQml(const std::vector<std::string>& values);

[[nodiscard]] inline bool fromQml(bool value) {
    return value;
}
[[nodiscard]] inline double fromQml(double value) {
    return value;
}
[[nodiscard]] std::string fromQml(const QString& value);

} // namespace tapalong
