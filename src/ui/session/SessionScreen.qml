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
        readonly property point centre: {
            root.view.isDark; // any property: the function below has no signal of its own
            return root.view.glowCentre(root.width, root.height);
        }

        x: centre.x - root.view.glowRadius
        y: centre.y - root.view.glowRadius
        width: root.view.glowRadius * 2
        height: width
        strength: root.view.glowOpacity
    }
    TypingArea {
        anchors.fill: parent
        view: root.view
    }
    Loader {
        anchors.centerIn: parent
        active: root.view.showsLockdownNotice
        sourceComponent: LockdownNotice {
            room: root.width
        }
    }
    Loader {
        anchors.fill: parent
        active: root.view.overlayVisible
        focus: true
        sourceComponent: ExitScreen {
            focus: true
            overlay: root.view.overlay
            presented: root.view.overlayPresented
            onGone: root.view.overlayGone()
        }
    }
}
