pragma ComponentBehavior: Bound

import QtQuick
import Tapalong

// Two halves that take a number one step down or up; the arrow keys do the same.
Item {
    id: stepper

    required property Theme theme
    required property string label
    required property bool canIncrement
    required property bool canDecrement

    signal incremented
    signal decremented

    function stepUp() {
        if (canIncrement) {
            incremented();
        }
    }
    function stepDown() {
        if (canDecrement) {
            decremented();
        }
    }

    implicitWidth: 64
    implicitHeight: 28
    activeFocusOnTab: true
    Keys.onUpPressed: stepUp()
    Keys.onRightPressed: stepUp()
    Keys.onDownPressed: stepDown()
    Keys.onLeftPressed: stepDown()

    Accessible.role: Accessible.SpinBox
    Accessible.name: label
    Accessible.focusable: true
    Accessible.onIncreaseAction: stepUp()
    Accessible.onDecreaseAction: stepDown()

    component Half: PlainButton {
        id: half

        theme: stepper.theme
        width: stepper.width / 2
        height: stepper.height
        autoRepeat: true
        focusPolicy: Qt.NoFocus

        contentItem: Item {
            opacity: half.enabled ? 1 : 0.35

            Rectangle {
                anchors.centerIn: parent
                width: 10
                height: 1.5
                color: stepper.theme.text
            }
            Rectangle {
                anchors.centerIn: parent
                visible: half.text === "+"
                width: 1.5
                height: 10
                color: stepper.theme.text
            }
        }
        background: Rectangle {
            radius: 6
            color: half.down ? stepper.theme.controlPressed : "transparent"
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: stepper.theme.control

        Rectangle {
            anchors.centerIn: parent
            width: 1
            height: parent.height
            color: stepper.theme.outline
        }
        FocusRing {
            theme: stepper.theme
            shown: stepper.activeFocus
        }
    }
    Row {
        Half {
            text: "\u2212"
            enabled: stepper.canDecrement
            onClicked: stepper.stepDown()
        }
        Half {
            text: "+"
            enabled: stepper.canIncrement
            onClicked: stepper.stepUp()
        }
    }
}
