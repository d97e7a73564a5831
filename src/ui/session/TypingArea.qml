import QtQuick
import Tapalong

// The typed text, scrolling; no bars.
Flickable {
    id: area

    required property SessionViewAdapter view

    // The end stays in sight when the screen or the lines change, unless a parent has scrolled back.
    property bool followsEnd: true

    function scrollToBottom() {
        followsEnd = true;
        contentY = Math.max(0, contentHeight - height);
    }
    function scrollBy(distance) {
        contentY = Math.max(0, Math.min(contentY + distance, contentHeight - height));
        followsEnd = atYEnd;
    }
    function follow() {
        if (followsEnd)
            scrollToBottom();
    }

    onContentHeightChanged: follow()
    onHeightChanged: follow()

    contentWidth: width
    contentHeight: bottom.y + bottom.height
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
            area.scrollToBottom();
        }
    }

    TypedText {
        id: text

        view: area.view
        x: 40
        y: 40
        width: area.width - 80
        viewportY: area.contentY - y
        viewportHeight: area.height
        Accessible.role: Accessible.StaticText
    }
    // What is scrolled to.
    Item {
        id: bottom

        y: text.y + text.height + 40
        width: parent.width
        height: 1
    }
}
