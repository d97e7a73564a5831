import QtQuick
import QtQuick.Templates as T
import Tapalong

// Every hue from left to right.
T.Slider {
    id: strip

    required property Theme theme
    required property real hue

    signal movedTo(real hue)

    implicitWidth: 218
    implicitHeight: 20
    value: hue
    stepSize: 0.01
    focusPolicy: Qt.TabFocus
    onMoved: movedTo(value)
    Accessible.name: qsTr("Hue")

    background: RainbowBar {
        y: (strip.height - height) / 2
        width: strip.width
        height: 12
        radius: 6
        colors: ["#ff0000", "#ffff00", "#00ff00", "#00ffff", "#0000ff", "#ff00ff", "#ff0000"]
    }
    handle: Rectangle {
        x: strip.visualPosition * (strip.width - width)
        y: (strip.height - height) / 2
        width: 18
        height: 18
        radius: 9
        color: Qt.hsva(strip.value, 1, 1, 1)
        border.width: 3
        border.color: "white"

        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            radius: 10
            color: "transparent"
            border.width: 1
            border.color: Qt.rgba(0, 0, 0, 0.3)
        }
        FocusRing {
            theme: strip.theme
            shown: strip.visualFocus
            gap: 1
            around: 9
        }
    }
}
