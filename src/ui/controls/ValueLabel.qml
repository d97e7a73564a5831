import QtQuick
import Tapalong

// The figure behind a slider. As wide as its widest text needs: it must not jump, nor be cut off.
Text {
    required property Theme theme

    font.pixelSize: 14
    color: theme.secondary
    horizontalAlignment: Text.AlignRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
