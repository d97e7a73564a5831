#pragma once

#include "desktop/support/EventLoop.h"
#include "desktop/support/XClient.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

#include <string>
#include <vector>

namespace tapalong::test {

/// A window of ours, filling the screen, that writes down what Qt gives it. Its field stands for a password field.
class OwnWindow : public QWindow {
public:
    struct Field : QObject {
        bool event(QEvent* event) override {
            if (event->type() == QEvent::KeyPress) {
                const auto* key = static_cast<QKeyEvent*>(event);
                keys.push_back(key->key());
                text += key->text().toStdString();
            }
            return QObject::event(event);
        }
        std::vector<int> keys;
        std::string text;
    };

    explicit OwnWindow(Qt::WindowFlags flags = Qt::FramelessWindowHint) {
        setFlags(flags);
        setGeometry(0, 0, 1280, 800);
        show();
        activate();
    }

    void activate() {
        (void)spinUntil([this] { return isExposed(); });
        // Qt asks with the time of the last event that it saw, which the server may find too old.
        XClient().focus(static_cast<xcb_window_t>(winId()));
        (void)spinUntil([this] { return QGuiApplication::focusWindow() == this; });
    }

    [[nodiscard]] QObject* focusObject() const override {
        return fieldHasFocus ? const_cast<Field*>(&field) : static_cast<QObject*>(const_cast<OwnWindow*>(this));
    }

    Field field;
    bool fieldHasFocus = false;
    std::string typed;
    int keyPresses = 0;
    int keyReleases = 0;
    std::vector<Qt::MouseButton> clicks;
    int moves = 0;
    int wheels = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        ++keyPresses;
        typed += event->text().toStdString();
    }
    void keyReleaseEvent(QKeyEvent* event) override { keyReleases += event->isAutoRepeat() ? 0 : 1; }
    void mousePressEvent(QMouseEvent* event) override { clicks.push_back(event->button()); }
    void mouseMoveEvent(QMouseEvent*) override { ++moves; }
    void wheelEvent(QWheelEvent*) override { ++wheels; }
};

} // namespace tapalong::test
