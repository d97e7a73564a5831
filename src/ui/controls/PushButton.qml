import QtQuick
import Tapalong

// A small grey button with a text or a symbol.
PlainButton {
    id: button

    property string symbol: ""
    property bool tinted: false
    property int pixelSize: 14

    implicitWidth: Math.max(32, implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(28, implicitContentHeight + topPadding + bottomPadding)
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4
    opacity: enabled ? 1 : 0.45

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
