import QtQuick
import QtQuick.Layouts
import Tapalong

// The settings window: header, form, and the start area, which never scrolls out of sight.
Rectangle {
    id: root

    required property SettingsViewAdapter view
    readonly property Theme theme: Theme {
        dark: root.view.isDark
    }

    color: theme.window
    implicitWidth: 500
    implicitHeight: layout.implicitHeight

    Shortcut {
        sequences: ["Meta+Return", "Meta+Enter", "Ctrl+Return", "Ctrl+Enter"]
        enabled: root.view.startEnabled
        onActivated: root.view.startSession()
    }

    ColumnLayout {
        id: layout

        anchors.fill: parent
        spacing: 0

        SettingsHeader {
            theme: root.theme
            icon: root.view.appIcon
            Layout.fillWidth: true
            Layout.margins: 20
            Layout.bottomMargin: 16
        }
        Rectangle {
            implicitHeight: 1
            color: root.theme.hairline
            Layout.fillWidth: true
        }
        SettingsForm {
            view: root.view
            theme: root.theme
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: 120
        }
        StartArea {
            view: root.view
            theme: root.theme
            Layout.fillWidth: true
        }
    }
}
