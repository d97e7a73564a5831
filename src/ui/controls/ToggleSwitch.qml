import QtQuick
import QtQuick.Templates as T
import Tapalong

// A switch that shows `on` and asks for a change. Clicks, keys and assistive programs all come in through `checked`.
T.Switch {
    id: toggle

    required property Theme theme
    required property bool on

    signal toggledTo(bool value)

    implicitWidth: 40
    implicitHeight: 24
    padding: 0
    checked: on
    focusPolicy: Qt.TabFocus
    opacity: enabled ? 1 : 0.45
    Keys.onReturnPressed: toggle.toggle()
    Keys.onEnterPressed: toggle.toggle()

    onCheckedChanged: {
        if (checked === on) {
            return;
        }
        if (enabled) {
            toggledTo(checked);
        } else {
            checked = Qt.binding(() => toggle.on);
        }
    }

    indicator: Rectangle {
        implicitWidth: 40
        implicitHeight: 24
        radius: height / 2
        color: toggle.checked ? toggle.theme.accent : toggle.theme.track
        border.width: 1
        border.color: toggle.checked ? "transparent" : toggle.theme.outline

        Rectangle {
            x: toggle.visualPosition * (parent.width - width - 4) + 2
            y: 2
            width: 20
            height: 20
            radius: 10
            color: "white"
            border.width: 1
            border.color: Qt.rgba(0, 0, 0, 0.12)

            Behavior on x {
                enabled: !toggle.down
                NumberAnimation {
                    duration: 120
                    easing.type: Easing.OutCubic
                }
            }
        }
        FocusRing {
            theme: toggle.theme
            shown: toggle.visualFocus
            around: 12
        }
    }
}
