import QtQuick
import QtQuick.Templates as T
import Tapalong

T.AbstractButton {
    id: button

    required property Theme theme
    readonly property color ink: "#14142a" // white would not be readable on yellow and green

    function pressFromAfar() {
        if (enabled) {
            button.clicked();
        }
    }

    implicitHeight: 48
    text: qsTr("Start Session")
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: pressFromAfar()

    contentItem: ButtonLabel {
        text: button.text
        symbol: "play.fill"
        pixelSize: 20
        weight: Font.DemiBold
        symbolSize: 19
        ink: button.ink
    }

    background: RainbowBar {
        radius: 10
        colors: ["#ed2e2e", "#fa7305", "#fcc70d", "#2ec740", "#3380eb", "#8c52d9"]

        Rectangle {
            anchors.fill: parent
            radius: 10
            color: button.down ? "black" : "white"
            opacity: button.down ? 0.12 : button.hovered ? 0.1 : 0
        }
        FocusRing {
            theme: button.theme
            shown: button.visualFocus
            around: 10
        }
    }
}
