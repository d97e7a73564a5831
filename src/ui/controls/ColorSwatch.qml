import QtQuick
import QtQuick.Templates as T
import Tapalong

// One ready colour, named by its `text`.
T.AbstractButton {
    id: swatch

    required property Theme theme
    required property bool chosen

    implicitWidth: 26
    implicitHeight: 26
    focusPolicy: Qt.TabFocus
    Keys.onReturnPressed: swatch.clicked()
    Keys.onEnterPressed: swatch.clicked()
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: swatch.clicked()

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
