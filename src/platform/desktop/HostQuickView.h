#pragma once

#include <QQuickView>

#include <functional>

class QKeyEvent;

namespace tapalong {

/// The toolkit's window behind a QtWindow. It never closes by itself, whoever asks.
class HostQuickView final : public QQuickView {
public:
    struct Callbacks {
        std::function<void()> closeRequested{};
        std::function<void(const QKeyEvent&)> unhandledKey{};
        std::function<bool()> isBehind{};             ///< whether a window before this one keeps the pointer from it
        std::function<void()> pressedWhileInactive{}; ///< a mouse button went down, and another window has the keyboard
    };

    HostQuickView(QQmlEngine& engine, Callbacks callbacks);

    /// From here on nobody is called any more.
    void detach() { m_callbacks = {}; }

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;

private:
    void report(const QKeyEvent& event);

    Callbacks m_callbacks;
};

} // namespace tapalong
