import QtQuick
import Tapalong

// Saturation from left to right, brightness from bottom to top, of one hue. Arrow keys move the mark.
Rectangle {
    id: plane

    required property Theme theme
    required property real hue
    required property real across // 0...1
    required property real up // 0...1

    signal movedTo(real across, real up)

    readonly property real keyStep: 0.02

    function moveTo(newAcross: real, newUp: real) {
        movedTo(Math.min(Math.max(newAcross, 0), 1), Math.min(Math.max(newUp, 0), 1));
    }

    implicitWidth: 218
    implicitHeight: 120
    activeFocusOnTab: true
    Keys.onLeftPressed: moveTo(across - keyStep, up)
    Keys.onRightPressed: moveTo(across + keyStep, up)
    Keys.onUpPressed: moveTo(across, up + keyStep)
    Keys.onDownPressed: moveTo(across, up - keyStep)
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Saturation and brightness")
    Accessible.focusable: true

    gradient: Gradient {
        orientation: Gradient.Horizontal

        GradientStop {
            position: 0
            color: "white"
        }
        GradientStop {
            position: 1
            color: Qt.hsva(plane.hue, 1, 1, 1)
        }
    }

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop {
                position: 0
                color: "transparent"
            }
            GradientStop {
                position: 1
                color: "black"
            }
        }
    }
    Rectangle {
        x: plane.across * plane.width - width / 2
        y: (1 - plane.up) * plane.height - height / 2
        width: 14
        height: 14
        radius: 7
        color: Qt.hsva(plane.hue, plane.across, plane.up, 1)
        border.width: 2
        border.color: "white"

        Rectangle {
            anchors.fill: parent
            anchors.margins: -1
            radius: 8
            color: "transparent"
            border.width: 1
            border.color: Qt.rgba(0, 0, 0, 0.4)
        }
    }
    FocusRing {
        theme: plane.theme
        shown: plane.activeFocus
        around: 0
    }
    MouseArea {
        anchors.fill: parent
        onPressed: mouse => plane.moveTo(mouse.x / width, 1 - mouse.y / height)
        onPositionChanged: mouse => plane.moveTo(mouse.x / width, 1 - mouse.y / height)
    }
}
