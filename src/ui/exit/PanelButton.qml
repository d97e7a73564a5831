import QtQuick
import QtQuick.Templates as T
import Tapalong

// A wide coloured button of the exit panel. A click leaves the keyboard where it is: in the password field.
T.AbstractButton {
    id: button

    required property Theme theme
    required property color face
    property string symbol: ""

    function pressFromAfar() {
        if (enabled) {
            button.clicked();
        }
    }

    implicitWidth: 260
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    topPadding: 12
    bottomPadding: 12
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: pressFromAfar()

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
