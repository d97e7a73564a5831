import QtQuick
import QtQuick.Templates as T
import Tapalong

// What every button of ours does, without a look. A click leaves the keyboard where it is; Return and Enter press it as
// the space bar does. Assistive programs know it by its `text`.
T.AbstractButton {
    id: button

    required property Theme theme

    focusPolicy: Qt.TabFocus
    hoverEnabled: true
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    Accessible.role: Accessible.Button
    Accessible.name: button.text
    Accessible.onPressAction: {
        if (button.enabled) { // unlike a click, this comes also while it is not
            button.clicked();
        }
    }
}
