#include "ui/Theme.h"

namespace tapalong {

const Theme::Colors& Theme::colors(bool dark) {
    static const Colors lightColors{
        .window = 0xf3f3f7,
        .card = 0xffffff,
        .hairline = QColor(0x1c, 0x1c, 0x28, 23),
        .text = 0x1c1c28,
        .secondary = 0x62626f,
        .accent = 0x2f6fe0,
        .warningInk = 0x9a5b00,
        .warningFill = 0xfff3dc,
        .control = 0xe8e8f0,
        .controlPressed = 0xd8d8e3,
        .track = 0xe2e2e9,
        .field = 0xf3f3f7,
        .outline = QColor(0x1c, 0x1c, 0x28, 36),
    };
    static const Colors darkColors{
        .window = 0x1d1d24,
        .card = 0x282831,
        .hairline = QColor(0xf3, 0xf3, 0xf8, 23),
        .text = 0xf3f3f8,
        .secondary = 0xa9a9b8,
        .accent = 0x4f8cf5,
        .warningInk = 0xffc66b,
        .warningFill = 0x3a2f1b,
        .control = 0x383843,
        .controlPressed = 0x464653,
        .track = 0x3a3a46,
        .field = 0x1d1d24,
        .outline = QColor(0xf3, 0xf3, 0xf8, 36),
    };
    return dark ? darkColors : lightColors;
}

void Theme::setDark(bool dark) {
    if (m_dark != dark) {
        m_dark = dark;
        emit changed();
    }
}

} // namespace tapalong
