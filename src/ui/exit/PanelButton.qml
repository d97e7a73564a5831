import QtQuick
import Tapalong

// A wide coloured button of the exit panel. A click leaves the keyboard where it is: in the password field.
PlainButton {
    id: button

    required property color face
    property string symbol: ""

    implicitWidth: 260
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    topPadding: 12
    bottomPadding: 12

    contentItem: ButtonLabel {
        text: button.text
        symbol: button.symbol
        pixelSize: 17
        weight: Font.DemiBold
        symbolSize: 22
        ink: "white"
    }

    background: Rectangle {
        radius: 12
        color: button.face

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.down ? "black" : "white"
            opacity: button.down ? 0.2 : button.hovered && button.enabled ? 0.06 : 0
        }
        FocusRing {
            theme: button.theme
            shown: button.visualFocus
            around: 12
            border.color: "white"
        }
    }
}
