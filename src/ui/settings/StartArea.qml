pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tapalong

// What is missing for a start, and the start.
ColumnLayout {
    id: area

    required property SettingsViewAdapter view
    required property Theme theme

    spacing: 0

    Rectangle {
        implicitHeight: 1
        color: area.theme.hairline
        Layout.fillWidth: true
    }
    ColumnLayout {
        spacing: 12
        Layout.fillWidth: true
        Layout.margins: 20
        Layout.topMargin: 16
        Layout.bottomMargin: 16

        WarningRow {
            theme: area.theme
            visible: area.view.showsAccessibilityWarning
            message: qsTr("Accessibility permission required for full lockdown")

            PushButton {
                theme: area.theme
                pixelSize: 13
                text: qsTr("Grant Accessibility Permission")
                onClicked: area.view.requestAccessibilityPermission()
                Layout.leftMargin: 26
            }
        }
        WarningRow {
            theme: area.theme
            visible: area.view.showsPasswordWarning
            message: qsTr("Set an exit password before starting a session")
        }
        Repeater {
            model: area.view.notices

            WarningRow {
                required property string modelData

                theme: area.theme
                message: modelData
            }
        }
        StartButton {
            theme: area.theme
            enabled: area.view.startEnabled
            opacity: area.view.startOpacity
            onClicked: area.view.startSession()
            Layout.fillWidth: true
        }
        Text {
            text: area.view.exitHint
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            font.pixelSize: 13
            color: area.theme.secondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.fillWidth: true
        }
    }
}
