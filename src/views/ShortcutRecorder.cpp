#include "views/ShortcutRecorder.h"

#include "base/Fatal.h"
#include "session/ApplicationDelegate.h"
#include "settings/SessionSettings.h"
#include "views/KeyNames.h"

#include <limits>

namespace tapalong {

namespace {

constexpr std::int64_t escapeKey = 53;

} // namespace

ShortcutRecorder::ShortcutRecorder(SessionSettings& settings, const Platform& platform)
    : m_settings(settings), m_platform(platform) {}

void ShortcutRecorder::startRecordingShortcut() {
    m_isRecordingShortcut.set(true);
    m_shortcutMonitor =
        m_platform.eventMonitors.addLocalMonitorForEvents(maskOf(EventType::keyDown) | maskOf(EventType::flagsChanged),
                                                          [weak = weak_from_this()](const InputEvent& event) {
                                                              if (const auto self = weak.lock()) {
                                                                  self->handle(event);
                                                              }
                                                              return Verdict::consume;
                                                          });
}

void ShortcutRecorder::stopRecordingShortcut() {
    m_isRecordingShortcut.set(false);
    if (m_shortcutMonitor) {
        m_platform.eventMonitors.removeMonitor(*m_shortcutMonitor);
        m_shortcutMonitor.reset();
    }
}

void ShortcutRecorder::toggle() {
    if (isRecordingShortcut()) {
        stopRecordingShortcut();
    } else {
        startRecordingShortcut();
    }
}

void ShortcutRecorder::handle(const InputEvent& event) {
    if (event.type != EventType::keyDown) {
        return;
    }
    if (event.keyCode == escapeKey) {
        stopRecordingShortcut();
        return;
    }
    // The whole mask counts, also the bits that arrow and function keys carry by themselves.
    const auto modifiers = event.modifierFlags & Modifier::deviceIndependentMask;
    if (modifiers == 0) {
        return;
    }
    m_settings.globalShortcutKeyCode.set(event.keyCode);
    m_settings.globalShortcutModifiers.set(static_cast<std::int64_t>(modifiers));
    stopRecordingShortcut();
    auto* delegate = ApplicationDelegate::shared();
    verify(delegate != nullptr, "the application delegate must be there before a shortcut is recorded");
    delegate->registerGlobalShortcut();
}

std::string ShortcutRecorder::shortcutDisplayString() const {
    const auto modifiers = m_settings.globalShortcutModifiers.get();
    verify(modifiers >= 0, "the stored shortcut's modifier mask must not be negative");
    const auto keyCode = m_settings.globalShortcutKeyCode.get();
    verify(keyCode >= 0 && keyCode <= std::numeric_limits<std::uint16_t>::max(),
           "the stored shortcut's key code must be within 0...65535");
    return modifiersToSymbols(static_cast<ModifierFlags>(modifiers)) +
           keyCodeToString(static_cast<std::uint16_t>(keyCode));
}

} // namespace tapalong
