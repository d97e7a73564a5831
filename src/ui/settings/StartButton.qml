import QtQuick
import Tapalong

PlainButton {
    id: button

    readonly property color ink: "#14142a" // white would not be readable on yellow and green

    implicitHeight: 48
    text: qsTr("Start Session")

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
