pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tapalong

// A titled card of rows with hairlines between those that are visible.
ColumnLayout {
    id: section

    required property Theme theme
    required property string title
    default property alias rows: list.data

    spacing: 8

    Text {
        text: section.title
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: section.theme.secondary
        Layout.leftMargin: 12
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Rectangle {
        implicitHeight: list.implicitHeight
        radius: 12
        color: section.theme.card
        border.width: 1
        border.color: section.theme.hairline
        Layout.fillWidth: true

        ColumnLayout {
            id: list

            width: parent.width
            spacing: 0
        }
        Repeater {
            model: list.visibleChildren.length - 1

            Rectangle {
                required property int index

                x: 16
                y: list.visibleChildren[index + 1].y
                width: parent.width - x - 1
                height: 1
                color: section.theme.hairline
            }
        }
    }
}
