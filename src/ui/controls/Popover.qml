import QtQuick
import QtQuick.Templates as T
import Tapalong

// A card above the window's content, opened by the button around it. Escape and a press elsewhere close it. A press on
// the button does not: the click that comes of it would open the card again.
T.Popup {
    id: popover

    required property Theme theme

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: 16
    margins: 8
    modal: false
    focus: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: 100
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: 100
        }
    }

    background: Item {
        PanelShadow {
            anchors.fill: parent
            anchors.margins: -spread
            anchors.topMargin: -spread + 4
            anchors.bottomMargin: -spread - 4
            spread: 24
            cornerRadius: 10
            strength: popover.theme.dark ? 0.5 : 0.22
        }
        Rectangle {
            anchors.fill: parent
            radius: 10
            color: popover.theme.dark ? "#32323d" : "#ffffff"
            border.width: 1
            border.color: popover.theme.outline
        }
    }
}
