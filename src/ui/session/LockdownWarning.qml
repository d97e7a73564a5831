import QtQuick
import QtQuick.Layouts
import Tapalong

// One line: this session should hold the whole keyboard, and does not. True of none of it and of most of it.
Rectangle {
    id: warning

    property real room: 0 // width it may take

    implicitWidth: content.implicitWidth + 40
    implicitHeight: content.implicitHeight + 24
    width: Math.min(implicitWidth, room)
    radius: 16
    color: Qt.rgba(0, 0, 0, 0.7)

    RowLayout {
        id: content

        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        anchors.topMargin: 12
        anchors.bottomMargin: 12
        spacing: 12

        Symbol {
            name: "exclamationmark.shield"
            color: "#ff9f0a"
            size: 20
        }
        Text {
            text: qsTr("Lockdown Mode is not in force: Tapalong could not get all of the keyboard for itself. Keys may reach other programs or the system.")
            font.pixelSize: 15
            color: "white"
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
            Layout.fillWidth: true
        }
    }
}
