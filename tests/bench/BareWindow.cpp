// The least that a program with a QML window can be: what the real one's start and idling are compared with. With
// `controls` it shows three texts and a switch, for how much of a start is the toolkit's own: it reads the fonts, and
// loads the types that our controls are made of.
//
// usage: bare_window [blink | controls]

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

constexpr const char* bare = R"(
import QtQuick
Window {
    id: window
    property bool blinks: false
    width: blinks ? 1920 : 500
    height: blinks ? 1080 : 600
    visible: true
    Rectangle {
        id: cursor
        width: 16
        height: 96
        color: "black"
    }
    Timer {
        interval: 600
        repeat: true
        running: window.blinks
        onTriggered: cursor.visible = !cursor.visible
    }
})";

constexpr const char* controls = R"(
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
Window {
    property bool blinks: false
    width: 500
    height: 600
    visible: true
    ColumnLayout {
        Text { text: "Plain" }
        Text { text: "Strong"; font.weight: Font.DemiBold; font.pixelSize: 20 }
        Text { text: "Large"; font.weight: Font.Bold; font.pixelSize: 26 }
        T.Switch {
            indicator: Rectangle { implicitWidth: 40; implicitHeight: 24; radius: 12; color: "blue" }
        }
    }
})";

} // namespace

int main(int argc, char** argv) {
    const bool blinks = argc > 1 && std::strcmp(argv[1], "blink") == 0;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    const bool hasControls = argc > 1 && std::strcmp(argv[1], "controls") == 0;
    component.setData(hasControls ? controls : bare, QUrl());
    const std::unique_ptr<QObject> window(component.createWithInitialProperties({{"blinks", blinks}}));
    if (!window) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    return QGuiApplication::exec();
}
