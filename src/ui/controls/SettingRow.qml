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

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: 12
        spacing: 12

        RowLayout {
            spacing: 6
            Layout.fillWidth: true

            Text {
                id: title

                text: row.label
                font.pixelSize: 14
                color: row.theme.text
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Layout.maximumWidth: Math.ceil(implicitWidth) + 1
            }
            RowLayout {
                id: besideSlot
            }
            Item {
                Layout.fillWidth: true
            }
        }
        RowLayout {
            id: trailing

            spacing: 8
        }
    }
}
