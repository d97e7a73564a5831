import QtQuick
import Tapalong

// One ready colour, named by its `text`.
PlainButton {
    id: swatch

    required property bool chosen

    implicitWidth: 26
    implicitHeight: 26

    background: Rectangle {
        radius: 13
        color: swatch.text
        border.width: 1
        border.color: swatch.theme.outline

        FocusRing {
            theme: swatch.theme
            shown: swatch.visualFocus || swatch.chosen
            gap: swatch.visualFocus ? 1 : 0
            around: 13
            border.color: swatch.visualFocus ? theme.accent : theme.secondary
        }
    }
}
