pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import Tapalong

// What Lockdown Mode cannot stop on this computer: a note, not a warning, for nothing can be done about it here.
ColumnLayout {
    id: list

    required property SettingsViewAdapter view
    required property Theme theme

    spacing: 4

    Text {
        text: qsTr("On this computer Lockdown Mode cannot stop everything:")
        font.pixelSize: 12
        color: list.theme.secondary
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    Repeater {
        model: list.view.lockdownLimits

        RowLayout {
            id: entry

            required property string modelData

            spacing: 6

            Text {
                text: "\u2022"
                font.pixelSize: 12
                color: list.theme.secondary
                Layout.alignment: Qt.AlignTop
            }
            Text {
                text: entry.modelData
                font.pixelSize: 12
                color: list.theme.secondary
                wrapMode: Text.Wrap
                Layout.fillWidth: true
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }
}
