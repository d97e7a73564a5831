import QtQuick
import Tapalong

// Shows which control has the keyboard. Lies around its parent.
Rectangle {
    required property Theme theme
    property bool shown: false
    property real gap: 2
    property real around: 6 // corner radius of what it surrounds

    anchors.fill: parent
    anchors.margins: -gap - border.width
    radius: around + gap + border.width
    color: "transparent"
    border.width: 2
    border.color: theme.accent
    visible: shown
}
