import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Tapalong

// The three sections, scrolling. A control that gets the keyboard scrolls into view.
Flickable {
    id: form

    required property SettingsViewAdapter view
    required property Theme theme
    readonly property Item focused: Window.activeFocusItem

    function contains(item: Item): bool {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === sections) {
                return true;
            }
        }
        return false;
    }
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y - 16;
        const bottom = top + item.height + 32;
        if (top < contentY) {
            contentY = Math.max(0, top);
        } else if (bottom > contentY + height) {
            contentY = Math.min(contentHeight - height, bottom - height);
        }
    }

    clip: true
    implicitHeight: contentHeight
    contentWidth: width
    contentHeight: sections.implicitHeight + 32
    boundsBehavior: Flickable.StopAtBounds
    onFocusedChanged: {
        if (focused && contains(focused)) {
            reveal(focused);
        }
    }

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        implicitWidth: 10
        padding: 2
        visible: size < 1
        focusPolicy: Qt.NoFocus
        contentItem: Rectangle {
            implicitWidth: 6
            radius: 3
            color: form.theme.secondary
            opacity: bar.pressed ? 0.8 : bar.hovered ? 0.6 : 0.35
        }
    }

    ColumnLayout {
        id: sections

        x: 20
        y: 16
        width: form.width - 40
        spacing: 20

        ColumnLayout {
            spacing: 8
            Layout.fillWidth: true

            GeneralSection {
                view: form.view
                theme: form.theme
                Layout.fillWidth: true
            }
            LockdownLimits {
                view: form.view
                theme: form.theme
                visible: form.view.lockdownLimits.length > 0
                Layout.fillWidth: true
                Layout.leftMargin: 12
                Layout.rightMargin: 12
            }
        }
        SecuritySection {
            view: form.view
            theme: form.theme
            Layout.fillWidth: true
        }
        AdvancedSection {
            view: form.view
            theme: form.theme
            Layout.fillWidth: true
        }
    }
}
