import QtQuick
import Tapalong

// The dimmed window with the exit panel in its middle. Fades in and out.
FocusScope {
    id: screen

    required property ExitOverlayAdapter overlay
    required property bool lockdownMissing
    required property bool presented

    signal gone

    // Nothing can be clicked or typed any more while it fades out.
    enabled: presented
    opacity: 0
    state: presented ? "presented" : ""

    states: State {
        name: "presented"

        PropertyChanges {
            screen.opacity: 1
        }
    }
    transitions: [
        Transition {
            to: "presented"

            NumberAnimation {
                property: "opacity"
                duration: 350
                easing.type: Easing.InOutQuad
            }
        },
        Transition {
            from: "presented"

            SequentialAnimation {
                NumberAnimation {
                    property: "opacity"
                    duration: 350
                    easing.type: Easing.InOutQuad
                }
                ScriptAction {
                    script: screen.gone()
                }
            }
        }
    ]

    Rectangle {
        anchors.fill: parent
        color: Qt.rgba(0, 0, 0, 0.6)
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onClicked: mouse => {
            if (mouse.button === Qt.LeftButton) {
                screen.overlay.dismiss();
            }
        }
        onWheel: {}
    }
    ExitPanel {
        anchors.centerIn: parent
        focus: true
        overlay: screen.overlay
        lockdownMissing: screen.lockdownMissing
    }
}
