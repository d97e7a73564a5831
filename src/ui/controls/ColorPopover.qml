import QtQuick
import Tapalong

// Chooses the colour of a well, below it.
Popover {
    id: popover

    required property ColorWell well

    theme: well.theme
    x: well.width - width
    y: well.height + 6

    contentItem: ColorChooser {
        theme: popover.theme
        current: popover.well.current
        onPicked: color => popover.well.picked(color)
    }
}
