import QtQuick
import QtQuick.Layouts
import Tapalong

// A label at the left, the controls given as children at the right. 44 high, more where the label wraps.
Item {
    id: row

    required property Theme theme
    required property string label
    property alias beside: besideSlot.data // right behind the label
    default property alias controls: trailing.data

    implicitHeight: visible ? Math.max(44, title.implicitHeight + 20) : 0
    Layout.fillWidth: true

    // One layout, for the controls: with more of them a window full of rows takes its time to open.
    Text {
        id: title

        x: 16
        y: Math.round((row.height - height) / 2)
        width: trailing.x - x - besideSlot.width - 24
        text: row.label
        font.pixelSize: 14
        color: row.theme.text
        wrapMode: Text.Wrap
    }
    Row {
        id: besideSlot

        x: title.x + Math.min(Math.ceil(title.implicitWidth) + 1, title.width) + 6
        anchors.verticalCenter: parent.verticalCenter
    }
    RowLayout {
        id: trailing

        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8
    }
}
