import QtQuick
import QtQuick.Layouts
import Tapalong

// The ways out: fingerprint, password, or back to typing. Dark whatever the desktop is.
FocusScope {
    id: panel

    required property ExitOverlayAdapter overlay
    required property bool lockdownMissing
    readonly property Theme theme: Theme {
        dark: true
    }

    readonly property bool passwordFocused: overlay.passwordFocused

    implicitWidth: rows.implicitWidth + 80
    implicitHeight: rows.implicitHeight + 80
    onPasswordFocusedChanged: takeFocus()
    Component.onCompleted: {
        takeFocus();
        if (password.field.activeFocus) {
            reportFocus(); // it came before anybody listened
        }
    }

    function takeFocus() {
        if (passwordFocused) {
            password.field.forceActiveFocus();
        }
    }
    function reportFocus() {
        overlay.passwordFocusChanged(password.field, password.field.activeFocus);
    }
    function unlock() {
        overlay.attemptPassword();
        if (enabled) {
            password.field.forceActiveFocus(); // Unlock had the focus when it was pressed with a key
        }
    }

    PanelShadow {
        anchors.fill: parent
        anchors.margins: -spread
        spread: 60
        cornerRadius: 20
        strength: 0.5
    }
    Rectangle {
        anchors.fill: parent
        radius: 20
        color: Qt.rgba(0x2c / 255, 0x2c / 255, 0x36 / 255, 0.86)
    }
    // Its own, on top: the fill of a rectangle ends where its border begins, and both are translucent.
    Rectangle {
        anchors.fill: parent
        radius: 20
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.14)
    }
    // Keeps clicks from the backdrop.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onWheel: {}
    }

    ColumnLayout {
        id: rows

        anchors.centerIn: parent
        spacing: 24

        Symbol {
            name: "lock.shield"
            color: "white"
            size: 48
            Layout.alignment: Qt.AlignHCenter
        }
        Text {
            text: qsTr("Exit Tapalong")
            font.pixelSize: 22
            font.weight: Font.DemiBold
            color: "white"
            Layout.alignment: Qt.AlignHCenter
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            text: qsTr("Authenticate to end the session")
            font.pixelSize: 15
            color: Qt.rgba(1, 1, 1, 0.7)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.preferredWidth: 260
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        PanelButton {
            theme: panel.theme
            visible: panel.overlay.offersTouchID
            face: "#0f62e6"
            symbol: "touchid"
            text: qsTr("Use Touch ID")
            topPadding: 14
            bottomPadding: 14
            enabled: panel.overlay.touchIDEnabled
            opacity: panel.overlay.touchIDEnabled ? 1 : 0.5
            onClicked: panel.overlay.attemptTouchID()
        }
        RowLayout {
            visible: panel.overlay.offersTouchID
            spacing: 8
            Layout.preferredWidth: 260

            Rectangle {
                implicitHeight: 1
                color: Qt.rgba(1, 1, 1, 0.3)
                Layout.fillWidth: true
            }
            Text {
                text: qsTr("or")
                font.pixelSize: 12
                color: Qt.rgba(1, 1, 1, 0.5)
            }
            Rectangle {
                implicitHeight: 1
                color: Qt.rgba(1, 1, 1, 0.3)
                Layout.fillWidth: true
            }
        }
        ColumnLayout {
            spacing: 12

            SecretField {
                id: password

                theme: panel.theme
                label: qsTr("Enter exit password")
                placeholder: label
                implicitWidth: 260
                implicitHeight: 38
                secret: panel.overlay.password
                onEdited: panel.overlay.password = secret
                onReturnPressed: panel.overlay.attemptPassword()
            }
            Text {
                text: qsTr("Caps Lock is on")
                visible: panel.overlay.capsLockOn
                font.pixelSize: 12
                color: panel.theme.warningInk
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.preferredWidth: 260
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            // The keys go to whoever holds the keyboard then, and the session's own line lies below the dimming.
            Text {
                text: qsTr("Lockdown Mode is not in force: what you type may reach another program. If no dots appear here, a menu may be open: press Escape.")
                visible: panel.lockdownMissing
                font.pixelSize: 12
                color: panel.theme.warningInk
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Layout.preferredWidth: 260
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }
            PanelButton {
                theme: panel.theme
                face: panel.overlay.unlockEnabled ? "#1b8239" : "#6c6c78"
                text: qsTr("Unlock")
                enabled: panel.overlay.unlockEnabled
                onClicked: panel.unlock()
            }
        }
        Text {
            text: panel.overlay.errorMessage
            visible: text !== ""
            font.pixelSize: 12
            color: "#ff7b72"
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Layout.preferredWidth: 260
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        PanelButton {
            theme: panel.theme
            face: "#d22f27"
            text: qsTr("Cancel")
            onClicked: panel.overlay.dismiss()
        }
    }

    Connections {
        target: password.field
        function onActiveFocusChanged() {
            panel.reportFocus();
        }
    }
}
