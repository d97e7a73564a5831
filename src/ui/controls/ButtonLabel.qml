import QtQuick

// What stands on a button: a symbol, a text, or both. Silent: the button itself has the accessible name.
Item {
    id: face

    required property color ink
    property string text: ""
    property string symbol: ""
    property int pixelSize: 14
    property int weight: Font.Normal
    property real symbolSize: 14

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            name: face.symbol
            color: face.ink
            size: face.symbolSize
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            text: face.text
            font.pixelSize: face.pixelSize
            font.weight: face.weight
            color: face.ink
            Accessible.ignored: true
        }
    }
}
