import QtQuick
import Tapalong

// The typed text, scrolling; no bars.
Flickable {
    id: area

    required property SessionViewAdapter view

    // The core asks for the end whenever something was typed or deleted. A change of the screen or of the lines, of
    // which it knows nothing, keeps the end in sight, unless a parent has scrolled back.
    property bool followsEnd: true

    readonly property real padding: 40

    function showEnd() {
        if (followsEnd) {
            contentY = Math.max(0, contentHeight - height);
        }
    }
    function scrollBy(distance: real) {
        contentY = Math.max(0, Math.min(contentY + distance, contentHeight - height));
        followsEnd = atYEnd;
    }

    onContentHeightChanged: showEnd()
    onHeightChanged: showEnd()

    contentWidth: width
    contentHeight: text.height + 2 * padding + 1 // one more: the strip that is scrolled to
    // A child drags the pointer about, and fingers.
    interactive: false

    WheelHandler {
        enabled: area.view.scrollsBack
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        onWheel: event => area.scrollBy(-event.angleDelta.y)
    }
    Connections {
        target: area.view
        function onScrollToBottom() {
            area.followsEnd = true;
            area.showEnd();
        }
    }

    TypedText {
        id: text

        view: area.view
        x: area.padding
        y: area.padding
        width: area.width - 2 * area.padding
        viewportY: area.contentY - y
        viewportHeight: area.height
        Accessible.role: Accessible.StaticText
    }
}
