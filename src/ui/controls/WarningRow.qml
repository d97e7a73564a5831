import QtQuick
import QtQuick.Layouts
import Tapalong

// Something that the parent should know before a start, and perhaps a button that helps.
Rectangle {
    id: row

    required property Theme theme
    required property string message
    default property alias help: content.data

    implicitHeight: content.implicitHeight + 20
    radius: 10
    color: theme.warningFill
    Layout.fillWidth: true

    ColumnLayout {
        id: content

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        spacing: 8

        RowLayout {
            spacing: 8

            Symbol {
                name: "exclamationmark.triangle.fill"
                size: 18
                color: row.theme.warningInk
                Layout.alignment: Qt.AlignTop
            }
            Text {
                text: row.message
                font.pixelSize: 13
                font.weight: Font.Medium
                color: row.theme.warningInk
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
        }
    }
}
