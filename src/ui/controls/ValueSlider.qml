import QtQuick
import QtQuick.Templates as T
import Tapalong

// A slider that shows `current` and asks for a change. A stored value outside of the range is shown at its end and
// left alone until somebody moves the knob.
T.Slider {
    id: slider

    required property Theme theme
    required property controlRange range
    required property real current
    property bool complete: false

    signal movedTo(real value)

    implicitWidth: 100
    implicitHeight: 24
    from: range.lower
    to: range.upper
    stepSize: range.step
    snapMode: T.Slider.SnapAlways
    value: current
    focusPolicy: Qt.TabFocus
    Component.onCompleted: complete = true

    onValueChanged: {
        const shown = Math.min(Math.max(current, from), to);
        if (complete && Math.abs(value - shown) > stepSize / 100) {
            movedTo(value);
        }
    }

    background: Rectangle {
        y: (slider.height - height) / 2
        width: slider.width
        height: 4
        radius: 2
        color: slider.theme.track

        Rectangle {
            width: slider.handle.x + slider.handle.width / 2
            height: parent.height
            radius: parent.radius
            color: slider.theme.accent
        }
    }

    handle: Rectangle {
        x: slider.visualPosition * (slider.width - width)
        y: (slider.height - height) / 2
        width: 20
        height: 20
        radius: 10
        color: slider.pressed ? "#f0f0f0" : "white"
        border.width: 1
        border.color: Qt.rgba(0, 0, 0, 0.18)

        FocusRing {
            theme: slider.theme
            shown: slider.visualFocus
            gap: 1
            around: 10
        }
    }
}
