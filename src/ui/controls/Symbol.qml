import QtQuick

// One of our symbols in one colour; nothing while it has no name.
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
    sourceSize.width: size * Screen.devicePixelRatio
    sourceSize.height: size * Screen.devicePixelRatio
    source: name === "" ? "" : "image://symbol/" + name + "/" + hex(color.a) + hex(color.r) + hex(color.g) + hex(color.b)
    smooth: true
    Accessible.ignored: true
}
