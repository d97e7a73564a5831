pragma ComponentBehavior: Bound

import QtQuick
import Tapalong

// The session window, back to front: background, corner glow, typed text, notice, warning, exit overlay.
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
        // The newest line stays in sight above the warning.
        anchors.bottomMargin: warning.visible ? warning.height + warning.anchors.bottomMargin : 0
        view: root.view
    }
    LockdownNotice {
        anchors.centerIn: parent
        visible: root.view.showsLockdownNotice
        room: root.width
    }
    LockdownWarning {
        id: warning

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        visible: root.view.showsLockdownWarning
        // The glow in a lower corner stays free.
        room: root.width - 2 * (root.view.glowRadius + 20)
    }
    // Made anew each time it comes up. Not a Loader: that one does not take bound components in every version.
    Repeater {
        model: root.view.overlayVisible ? 1 : 0

        ExitScreen {
            anchors.fill: root
            focus: true
            overlay: root.view.overlay
            lockdownMissing: root.view.showsLockdownWarning
            presented: root.view.overlayPresented
            onGone: root.view.overlayGone()
        }
    }
}
