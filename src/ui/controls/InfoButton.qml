import QtQuick
import Tapalong

// Explains the control beside it in a popover, which a second click closes.
PlainButton {
    id: button

    required property bool presented
    required property string info

    signal presentedChangedTo(bool value)

    implicitWidth: 24
    implicitHeight: 24
    onClicked: presentedChangedTo(!presented)
    onPresentedChanged: {
        if (presented && popover.status === Loader.Null) {
            popover.setSource(Qt.resolvedUrl("InfoPopover.qml"), {
                button: button
            });
        }
    }

    Accessible.description: info

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            name: "info.circle"
            size: 19
            color: button.hovered || button.down ? button.theme.text : button.theme.secondary
        }
        FocusRing {
            theme: button.theme
            shown: button.visualFocus
            gap: 0
            around: 10
        }
    }

    // By its file's name, and when it is first asked for: most starts of the program do without it.
    Loader {
        id: popover

        anchors.fill: parent
    }
}
