import QtQuick
import Tapalong

// A framed field for a password. What is typed never enters the accessibility tree.
Rectangle {
    id: frame

    required property Theme theme
    required property string label
    property string placeholder: ""
    property alias secret: field.secret
    property alias field: field

    signal edited
    signal returnPressed

    implicitWidth: 200
    implicitHeight: 32
    radius: 7
    color: theme.field
    border.width: 1
    border.color: theme.outline

    Text {
        anchors.fill: field
        visible: field.empty
        text: frame.placeholder
        font.pixelSize: 14
        color: frame.theme.secondary
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    SecureField {
        id: field

        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 10
        ink: frame.theme.text
        selectionColor: Qt.alpha(frame.theme.accent, 0.45)
        onEdited: frame.edited()
        onReturnPressed: frame.returnPressed()

        // Not a passwordEdit: with that the toolkit hides the name too, and there is no text to hide.
        Accessible.role: Accessible.EditableText
        Accessible.name: frame.label
        Accessible.focusable: true
        Accessible.editable: true
    }
    FocusRing {
        theme: frame.theme
        shown: field.activeFocus
        gap: -1
        around: frame.radius
    }
}
