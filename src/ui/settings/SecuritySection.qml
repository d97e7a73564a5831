import QtQuick
import QtQuick.Layouts
import Tapalong

SettingSection {
    id: section

    required property SettingsViewAdapter view

    title: qsTr("Exit Security")

    SettingRow {
        theme: section.theme
        label: qsTr("Use Touch ID to Exit")

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Use Touch ID to Exit")
            on: section.view.useTouchID
            onToggledTo: value => section.view.useTouchID = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Exit Password")

        SecretField {
            id: password

            theme: section.theme
            label: qsTr("Exit Password")
            placeholder: qsTr("Password")
            secret: section.view.exitPassword
            onEdited: section.view.exitPassword = secret
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Hot Corner")

        MenuPicker {
            theme: section.theme
            model: section.view.exitCornerLabels
            chosen: section.view.exitCornerIndex
            onChose: index => section.view.exitCornerIndex = index
            Accessible.name: qsTr("Hot Corner")
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Corner Dwell Time")

        ValueSlider {
            theme: section.theme
            range: section.view.dwellTimeRange
            current: section.view.hotCornerDwellTime
            onMovedTo: value => section.view.hotCornerDwellTime = value
            Accessible.name: qsTr("Corner Dwell Time")
        }
        ValueLabel {
            theme: section.theme
            text: section.view.dwellTimeLabel
            Layout.preferredWidth: 36
        }
    }
}
