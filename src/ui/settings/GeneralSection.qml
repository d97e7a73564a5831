import QtQuick
import Tapalong

SettingSection {
    id: section

    required property SettingsViewAdapter view

    title: qsTr("General")

    SettingRow {
        theme: section.theme
        label: qsTr("Lockdown Mode")
        beside: InfoButton {
            theme: section.theme
            text: qsTr("About Lockdown Mode")
            presented: section.view.showLockdownInfo
            info: section.view.lockdownInfo
            onPresentedChangedTo: value => section.view.showLockdownInfo = value
        }

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Lockdown Mode")
            enabled: section.view.lockdownToggleEnabled
            on: section.view.kioskMode
            onToggledTo: value => section.view.kioskMode = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Rainbow Mode")

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Rainbow Mode")
            on: section.view.rainbowMode
            onToggledTo: value => section.view.rainbowMode = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Modifier Keys Type Emoji")
        beside: InfoButton {
            theme: section.theme
            text: qsTr("About Modifier Keys Type Emoji")
            presented: section.view.showEmojiInfo
            info: section.view.emojiInfo
            onPresentedChangedTo: value => section.view.showEmojiInfo = value
        }

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Modifier Keys Type Emoji")
            on: section.view.modifierKeysTypeEmoji
            onToggledTo: value => section.view.modifierKeysTypeEmoji = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Enable Sound")

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Enable Sound")
            on: section.view.soundEnabled
            onToggledTo: value => section.view.soundEnabled = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Sound")
        visible: section.view.showsSoundPicker

        MenuPicker {
            theme: section.theme
            model: section.view.soundPackNames
            chosen: section.view.soundPackIndex
            onChose: index => section.view.soundPackIndex = index
            Accessible.name: qsTr("Sound")
        }
        PushButton {
            theme: section.theme
            symbol: "play.fill"
            text: qsTr("Play Sound")
            implicitHeight: 32
            onClicked: section.view.previewSound()
        }
    }
}
