#include "app/DesktopPlatform.h"

#include "ui/ViewFactory.h"

namespace tapalong {

DesktopPlatform::DesktopPlatform()
    : m_userDefaults(JsonUserDefaults::standardPath(), m_notices), m_input(makeDesktopInput(m_notices)),
      m_screens(m_notificationCenter, {.pointer = [this] { return m_input->pointer(); },
                                       .size = [this](const QScreen& screen) { return m_input->sizeOf(screen); }}),
      m_windows(windowTraits()),
      m_inhibitors(presentSessionBus(), openSystemBus,
                   [this](PowerKey key, bool granted) { m_limitFinder.powerKeyAnswered(key, granted); }),
      m_application(m_windows, m_appearance, m_inhibitors),
      m_limitFinder(m_limits, *m_input, m_inhibitors.powerKeys()) {}

WindowTraits DesktopPlatform::windowTraits() {
    WindowTraits traits;
    traits.makeContent =
        makeViewFactory({.appearance = &m_appearance,
                         .isDark = [this] { return m_appearance.appearance() == Appearance::darkAqua; },
                         .secureFieldFocused = [this](QObject* field) { m_input->secureFieldFocused(field); }});
    m_input->describeWindows(traits);
    return traits;
}

Platform DesktopPlatform::platform() {
    return {.accessibility = m_input->accessibility(),
            .application = &m_application,
            .biometrics = m_biometrics,
            .eventMonitors = m_input->eventMonitors(),
            .eventTaps = m_input->eventTaps(),
            .inputLimits = m_limits,
            .keyboardLocks = m_input->keyboardLocks(),
            .mainQueue = m_mainQueue,
            .notificationCenter = m_notificationCenter,
            .notices = m_notices,
            .random = m_random,
            .screens = m_screens,
            .standardOutput = m_standardOutput,
            .systemSounds = m_systemSounds,
            .timers = m_timers,
            .userDefaults = m_userDefaults,
            .windows = m_windows};
}

} // namespace tapalong
