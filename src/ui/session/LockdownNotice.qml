import QtQuick
import QtQuick.Layouts
import Tapalong

// Says that this session does not hold the desktop's own shortcuts back.
Rectangle {
    id: notice

    property real room: 0 // width of the window

    implicitWidth: content.implicitWidth + 48
    implicitHeight: content.implicitHeight + 48
    width: Math.min(implicitWidth, room)
    radius: 16
    color: Qt.rgba(0, 0, 0, 0.7)

    ColumnLayout {
        id: content

        anchors.fill: parent
        anchors.margins: 24
        spacing: 8

        Symbol {
            name: "exclamationmark.shield"
            color: "#ff9f0a"
            size: 32
            Layout.alignment: Qt.AlignHCenter
        }
        Text {
            text: qsTr("Lockdown Mode is off")
            font.pixelSize: 20
            font.weight: Font.DemiBold
            color: "white"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
        Text {
            text: qsTr("System shortcuts like Cmd+Q and screenshots are not blocked.")
            font.pixelSize: 16
            color: Qt.rgba(1, 1, 1, 0.7)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            Layout.fillWidth: true
        }
    }
}
