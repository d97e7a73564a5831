import QtQuick
import QtQuick.Templates as T
import Tapalong

// Explains the control beside it in a popover.
T.AbstractButton {
    id: button

    required property Theme theme
    required property bool presented
    required property string info

    signal presentedChangedTo(bool value)

    implicitWidth: 24
    implicitHeight: 24
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    onClicked: presentedChangedTo(true)
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: info
    Accessible.onPressAction: button.clicked()

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

    Popover {
        id: popover

        theme: button.theme
        x: (button.width - width) / 2
        y: button.height + 6
        width: 300
        visible: button.presented
        onClosed: button.presentedChangedTo(false)

        contentItem: Text {
            text: button.info
            font.pixelSize: 12
            lineHeight: 1.25
            wrapMode: Text.Wrap
            color: button.theme.text
        }
    }
}
