#pragma once

#include "platform/linux/x11/X11EventTaps.h"

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QTimer>
#include <QWindow>

namespace tapalong {

/// Gives a shown window of ours the display's focus.
void takeKeyboard(QWindow& window);

/// Keeps the display's focus with one window of ours.
///
/// While a tap holds the keyboard, keys come to us whoever has the focus. But the toolkit would deactivate a window
/// that loses it, and the password field in it; and whoever has it would have the keyboard the instant that the tap
/// ends. So the toolkit is not told of the loss, and the focus is taken back. The focus watchdog rests while the exit
/// question shows, so this cannot be left to it.
class X11FocusKeeper final : private QAbstractNativeEventFilter {
public:
    /// `taps` outlives the keeper and tells nobody else when it begins to hold the input. From here on the toolkit is
    /// told of no loss while it does.
    explicit X11FocusKeeper(X11EventTaps& taps);
    ~X11FocusKeeper() override;
    X11FocusKeeper(const X11FocusKeeper&) = delete;
    X11FocusKeeper& operator=(const X11FocusKeeper&) = delete;

    /// Takes the focus back for `window`, and no more for the one before, whenever it is visible: from other programs
    /// while the input is held, and when it begins to be; from other windows of ours always.
    void keepFor(QWindow& window);

private:
    [[nodiscard]] bool isGivenToAnotherOfOurs(const xcb_generic_event_t& event) const;
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    X11EventTaps& m_taps;
    QPointer<QWindow> m_window;
    QTimer m_untilTakenBack;
};

} // namespace tapalong
