#include "platform/desktop/PaletteAppearance.h"

#include <QGuiApplication>
#include <QPalette>

namespace tapalong {

Appearance paletteAppearance() {
    const auto palette = QGuiApplication::palette();
    const bool lightOnDark =
        palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
    return lightOnDark ? Appearance::darkAqua : Appearance::aqua;
}

} // namespace tapalong
