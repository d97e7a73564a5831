#pragma once

#include "base/Observable.h"
#include "platform/EventMonitors.h"
#include "platform/Platform.h"

#include <memory>
#include <optional>
#include <string>

namespace tapalong {

class SessionSettings;

/// Captures the quick-start shortcut: the next key pressed with at least one modifier. While it records, no key
/// reaches anything in the application. Held by shared pointer.
class ShortcutRecorder final : public ObservableObject, public std::enable_shared_from_this<ShortcutRecorder> {
public:
    ShortcutRecorder(SessionSettings& settings, const Platform& platform);

    void startRecordingShortcut();
    void stopRecordingShortcut();
    /// The badge's action: a second click cancels.
    void toggle();

    [[nodiscard]] bool isRecordingShortcut() const { return m_isRecordingShortcut.get(); }
    /// The stored shortcut, as in ⌃⌥⌘T. A negative mask or a key code outside 0...65535 stops the program.
    [[nodiscard]] std::string shortcutDisplayString() const;

private:
    void handle(const InputEvent& event);

    SessionSettings& m_settings;
    const Platform m_platform;
    Published<bool> m_isRecordingShortcut{*this, false};
    std::optional<MonitorToken> m_shortcutMonitor;
};

} // namespace tapalong
