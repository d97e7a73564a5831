import QtQuick
import Tapalong

// Shows a colour; pressing it opens a popover to choose another one. Not the toolkit's dialog: that one needs
// shaders, which the software renderer lacks, or looks foreign.
PlainButton {
    id: well

    required property color current

    signal picked(color value)

    implicitWidth: 46
    implicitHeight: 26
    onClicked: {
        if (popover.status === Loader.Null) {
            popover.setSource(Qt.resolvedUrl("ColorPopover.qml"), {
                well: well
            });
        }
        const card = popover.item as Popover;
        card.visible = !card.visible;
    }

    Accessible.description: current.toString()

    background: Rectangle {
        radius: 7
        color: "transparent"
        border.width: 1
        border.color: well.theme.outline

        Rectangle {
            anchors.fill: parent
            anchors.margins: 3
            radius: 4
            color: well.current
            border.width: 1
            border.color: well.theme.hairline
        }
        FocusRing {
            theme: well.theme
            shown: well.visualFocus
            around: 7
        }
    }

    // By its file's name, and when it is first asked for: else every start would load all that it is made of.
    Loader {
        id: popover

        anchors.fill: parent
    }
}
