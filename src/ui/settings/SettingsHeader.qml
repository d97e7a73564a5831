import QtQuick
import QtQuick.Layouts
import Tapalong

RowLayout {
    id: header

    required property Theme theme
    required property url icon

    spacing: 10

    Image {
        source: header.icon
        sourceSize.width: 56 * Screen.devicePixelRatio
        sourceSize.height: 56 * Screen.devicePixelRatio
        Layout.preferredWidth: 56
        Layout.preferredHeight: 56
        Accessible.ignored: true
    }
    ColumnLayout {
        spacing: 2

        Text {
            text: qsTr("Tapalong")
            font.pixelSize: 26
            font.weight: Font.Bold
            color: header.theme.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            text: qsTr("A safe keyboard playground for little ones")
            font.pixelSize: 14
            color: header.theme.secondary
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
