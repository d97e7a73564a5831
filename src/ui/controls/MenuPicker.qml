pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Tapalong

// Shows one of a few choices and opens the list of them.
T.ComboBox {
    id: picker

    required property Theme theme
    required property int chosen

    signal chose(int index)

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: 32
    leftPadding: 10
    rightPadding: 30
    currentIndex: chosen
    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    onCurrentIndexChanged: {
        if (currentIndex !== chosen && currentIndex >= 0) {
            chose(currentIndex);
        }
    }
    Keys.onReturnPressed: popup.open()
    Keys.onEnterPressed: popup.open()
    Accessible.onPressAction: popup.open()

    contentItem: Text {
        text: picker.displayText
        font.pixelSize: 14
        color: picker.theme.text
        verticalAlignment: Text.AlignVCenter
        Accessible.ignored: true
    }

    indicator: Symbol {
        x: picker.width - width - 10
        y: (picker.height - height) / 2 + 1
        name: "chevron.down"
        size: 12
        color: picker.theme.secondary
    }

    background: Rectangle {
        radius: 8
        color: picker.down || picker.hovered ? picker.theme.controlPressed : picker.theme.control

        FocusRing {
            theme: picker.theme
            shown: picker.visualFocus
            around: 8
        }
    }

    delegate: T.ItemDelegate {
        id: entry

        required property int index
        required property string modelData

        function choose() {
            picker.currentIndex = index;
            picker.popup.close();
        }

        width: ListView.view.width
        implicitHeight: 32
        leftPadding: 32
        rightPadding: 16
        text: modelData
        highlighted: picker.highlightedIndex === index
        Accessible.role: Accessible.MenuItem
        Accessible.name: modelData
        Accessible.onPressAction: choose()

        contentItem: Text {
            text: entry.modelData
            font.pixelSize: 14
            color: entry.highlighted ? "white" : picker.theme.text
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
        background: Rectangle {
            radius: 6
            color: entry.highlighted ? picker.theme.accent : "transparent"

            Symbol {
                x: 10
                anchors.verticalCenter: parent.verticalCenter
                visible: picker.currentIndex === entry.index
                name: "checkmark"
                size: 12
                color: entry.highlighted ? "white" : picker.theme.text
            }
        }
    }

    popup: Popover {
        readonly property TextMetrics longest: TextMetrics {
            font.pixelSize: 14
            text: {
                let widest = "";
                for (const option of picker.model) {
                    widest = option.length > widest.length ? option : widest;
                }
                return widest;
            }
        }

        theme: picker.theme
        padding: 5
        width: Math.max(picker.width, longest.advanceWidth + 70)
        x: picker.width - width
        y: picker.height + 4

        contentItem: ListView {
            implicitHeight: contentHeight
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            interactive: false
        }
    }
}
