import QtQuick
import QtQuick.Window

// One of our symbols in one colour.
Image {
    required property string name
    required property color color
    property real size: 16

    // Alpha first, as the provider reads it.
    function hex(part: real): string {
        return ("0" + Math.round(part * 255).toString(16)).slice(-2);
    }

    width: size
    height: size
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    source: "image://symbol/" + name + "/" + hex(color.a) + hex(color.r) + hex(color.g) + hex(color.b)
    smooth: true
    Accessible.ignored: true
}
