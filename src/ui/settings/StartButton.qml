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

    background: Rectangle {
        radius: 10
        gradient: Gradient {
            orientation: Gradient.Horizontal

            GradientStop {
                position: 0
                color: Qt.rgba(0.93, 0.18, 0.18, 1)
            }
            GradientStop {
                position: 0.2
                color: Qt.rgba(0.98, 0.45, 0.02, 1)
            }
            GradientStop {
                position: 0.4
                color: Qt.rgba(0.99, 0.78, 0.05, 1)
            }
            GradientStop {
                position: 0.6
                color: Qt.rgba(0.18, 0.78, 0.25, 1)
            }
            GradientStop {
                position: 0.8
                color: Qt.rgba(0.2, 0.5, 0.92, 1)
            }
            GradientStop {
                position: 1
                color: Qt.rgba(0.55, 0.32, 0.85, 1)
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
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
