pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tapalong

// Swatches, a field of saturation and brightness, and a strip of hues.
ColumnLayout {
    id: chooser

    required property Theme theme
    required property color current

    // Kept apart from `current`: grey has no hue, and black no saturation, to come back to.
    property real hue: 0
    property real saturation: 0
    property real brightness: 0

    readonly property var swatches: ["#FFFFFF", "#C7C7D1", "#62626F", "#1A1A2E", "#000000", "#ED2E2E", "#FA7305", "#FCC70D",
        "#8CDB21", "#2EC740", "#4DC7E6", "#3380EB", "#8C52D9", "#F29CC2"]

    signal picked(color color)

    function show(color: color) {
        const same = Qt.colorEqual(Qt.hsva(hue, saturation, brightness, 1), color);
        if (!same) {
            hue = color.hsvHue < 0 ? hue : color.hsvHue;
            saturation = color.hsvSaturation;
            brightness = color.hsvValue;
        }
    }
    function pick(newHue: real, newSaturation: real, newBrightness: real) {
        hue = newHue;
        saturation = newSaturation;
        brightness = newBrightness;
        picked(Qt.hsva(hue, saturation, brightness, 1));
    }

    spacing: 12
    onCurrentChanged: show(current)
    Component.onCompleted: show(current)

    Grid {
        columns: 7
        spacing: 6

        Repeater {
            model: chooser.swatches

            ColorSwatch {
                required property string modelData

                theme: chooser.theme
                text: modelData
                chosen: Qt.colorEqual(chooser.current, modelData)
                onClicked: chooser.picked(modelData)
            }
        }
    }
    ColorPlane {
        theme: chooser.theme
        hue: chooser.hue
        across: chooser.saturation
        up: chooser.brightness
        onMovedTo: (across, up) => chooser.pick(chooser.hue, across, up)
        Layout.fillWidth: true
    }
    HueStrip {
        theme: chooser.theme
        hue: chooser.hue
        onMovedTo: hue => chooser.pick(hue, chooser.saturation, chooser.brightness)
        Layout.fillWidth: true
    }
    Text {
        text: chooser.current.toString().toUpperCase()
        font.pixelSize: 13
        color: chooser.theme.secondary
        Layout.alignment: Qt.AlignRight
    }
}
