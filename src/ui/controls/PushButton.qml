import QtQuick
import QtQuick.Templates as T
import Tapalong

// A small grey button with a text or a symbol. A click leaves the keyboard where it is.
T.AbstractButton {
    id: button

    required property Theme theme
    property string symbol: ""
    property bool tinted: false
    property int pixelSize: 14

    function pressFromAfar() {
        if (enabled) {
            button.clicked();
        }
    }

    implicitWidth: Math.max(32, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(28, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: pressFromAfar()

    contentItem: ButtonLabel {
        text: button.symbol === "" ? button.text : ""
        symbol: button.symbol
        pixelSize: button.pixelSize
        ink: button.tinted ? button.theme.accent : button.theme.text
    }

    background: Rectangle {
        readonly property color tint: Qt.alpha(button.theme.accent, button.down ? 0.32 : 0.18)

        radius: 6
        color: button.tinted ? tint : button.down ? button.theme.controlPressed : button.theme.control

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.theme.text
            opacity: button.hovered && !button.down ? 0.04 : 0
        }
        FocusRing {
            theme: button.theme
            shown: button.visualFocus
        }
    }
}
