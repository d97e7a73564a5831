import QtQuick
import QtQuick.Layouts
import Tapalong

SettingSection {
    id: section

    required property SettingsViewAdapter view

    title: qsTr("Advanced")

    SettingRow {
        theme: section.theme
        label: qsTr("Font Size")

        ValueSlider {
            theme: section.theme
            range: section.view.fontSizeRange
            current: section.view.fontSize
            implicitWidth: 180
            onMovedTo: value => section.view.fontSize = value
            Accessible.name: qsTr("Font Size")
        }
        ValueLabel {
            theme: section.theme
            text: section.view.fontSizeLabel
            Layout.minimumWidth: 52
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Use System Appearance")

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Use System Appearance")
            on: section.view.useSystemAppearance
            onToggledTo: value => section.view.useSystemAppearance = value
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Text Color")
        visible: section.view.showsColorPickers

        ColorWell {
            theme: section.theme
            text: qsTr("Text Color")
            current: section.view.customFG
            onPicked: color => section.view.customFG = color
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Background Color")
        visible: section.view.showsColorPickers

        ColorWell {
            theme: section.theme
            text: qsTr("Background Color")
            current: section.view.customBG
            onPicked: color => section.view.customBG = color
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Show Cursor")

        ToggleSwitch {
            theme: section.theme
            text: qsTr("Show Cursor")
            on: section.view.showCursor
            onToggledTo: value => section.view.showCursor = value
        }
    }
    SettingRow {
        id: maxCharacters

        theme: section.theme
        label: qsTr("Max Characters: ") + section.view.maxCharacters

        NumberStepper {
            theme: section.theme
            label: maxCharacters.label
            canIncrement: section.view.canIncrementMaxCharacters
            canDecrement: section.view.canDecrementMaxCharacters
            onIncremented: section.view.incrementMaxCharacters()
            onDecremented: section.view.decrementMaxCharacters()
        }
    }
    SettingRow {
        theme: section.theme
        label: qsTr("Quick Start Shortcut")

        PushButton {
            theme: section.theme
            text: section.view.isRecordingShortcut ? qsTr("Press shortcut...") : section.view.shortcutDisplayString
            tinted: section.view.isRecordingShortcut
            onClicked: section.view.toggleRecording()
            Accessible.description: qsTr("Quick Start Shortcut")
        }
    }
}
