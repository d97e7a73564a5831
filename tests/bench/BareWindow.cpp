// The least that a program with a QML window can be: what the real one's start and idling are compared with.
//
// usage: bare_window [blink]

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

#include <cstdlib>
#include <cstring>
#include <memory>

int main(int argc, char** argv) {
    const bool blinks = argc > 1 && std::strcmp(argv[1], "blink") == 0;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(R"(
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
})",
                      QUrl());
    const std::unique_ptr<QObject> window(component.createWithInitialProperties({{"blinks", blinks}}));
    if (!window) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    return QGuiApplication::exec();
}
