pragma ComponentBehavior: Bound

import QtQuick
import Tapalong

// The session window, back to front: background, corner glow, typed text, notice, exit overlay.
FocusScope {
    id: root

    required property SessionViewAdapter view

    Rectangle {
        anchors.fill: parent
        color: root.view.backgroundColor
    }
    CornerGlow {
        x: root.view.glowX * root.width - root.view.glowRadius
        y: root.view.glowY * root.height - root.view.glowRadius
        width: root.view.glowRadius * 2
        height: width
        strength: root.view.glowOpacity
    }
    TypingArea {
        anchors.fill: parent
        view: root.view
    }
    LockdownNotice {
        anchors.centerIn: parent
        visible: root.view.showsLockdownNotice
        room: root.width
    }
    // Made anew each time it comes up. Not a Loader: that one does not take bound components in every version.
    Repeater {
        model: root.view.overlayVisible ? 1 : 0

        ExitScreen {
            anchors.fill: root
            focus: true
            overlay: root.view.overlay
            presented: root.view.overlayPresented
            onGone: root.view.overlayGone()
        }
    }
}
