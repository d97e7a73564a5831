import QtQuick
import Tapalong

// Says what there is to know, below its button.
Popover {
    id: popover

    required property InfoButton button

    theme: button.theme
    x: (button.width - width) / 2
    y: button.height + 6
    width: 300
    visible: button.presented
    onClosed: button.presentedChangedTo(false)

    contentItem: Text {
        text: popover.button.info
        font.pixelSize: 12
        lineHeight: 1.25
        wrapMode: Text.Wrap
        color: popover.theme.text
    }
}
