#include "app/AppDelegate.h"

#include "base/Fatal.h"
#include "base/WhileAlive.h"
#include "platform/MainQueue.h"
#include "platform/Screens.h"
#include "platform/Windows.h"
#include "session/SessionManager.h"
#include "settings/SessionSettings.h"
#include "views/SessionView.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tapalong {

namespace {

constexpr Rect frameWithoutScreen{0, 0, 1920, 1080};

} // namespace

AppDelegate::AppDelegate(SessionSettings& settings, std::shared_ptr<SessionManager> sessionManager,
                         const Platform& platform)
    : m_settings(settings), m_sessionManager(std::move(sessionManager)), m_platform(platform) {}

AppDelegate::~AppDelegate() {
    if (ApplicationDelegate::shared() == this) {
        setShared(nullptr);
    }
}

AppDelegate* AppDelegate::shared() {
    return static_cast<AppDelegate*>(ApplicationDelegate::shared());
}

void AppDelegate::applicationDidFinishLaunching() {
    setShared(this);
    registerGlobalShortcut();
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() const {
    return !m_sessionManager->isSessionActive();
}

void AppDelegate::applicationShouldHandleReopen() {
    if (!m_sessionManager->isSessionActive()) {
        showSettingsWindow();
    }
}

void AppDelegate::registerGlobalShortcut() {
    auto& monitors = m_platform.eventMonitors;
    if (m_globalShortcutMonitor) {
        monitors.removeMonitor(*m_globalShortcutMonitor);
    }
    m_globalShortcutMonitor = monitors.addGlobalMonitorForEvents(
        maskOf(EventType::keyDown), whileAlive(weak_from_this(), [](AppDelegate& self, const InputEvent& event) {
            if (self.matchesGlobalShortcut(event)) {
                self.scheduleStart();
            }
        }));
    // Never removed: the token is let go on purpose, and a repeated start does nothing.
    std::ignore = monitors.addLocalMonitorForEvents(maskOf(EventType::keyDown),
                                                    [weak = weak_from_this()](const InputEvent& event) {
                                                        const auto self = weak.lock();
                                                        if (!self || !self->matchesGlobalShortcut(event)) {
                                                            return Verdict::pass;
                                                        }
                                                        self->scheduleStart();
                                                        return Verdict::consume;
                                                    });
}

bool AppDelegate::matchesGlobalShortcut(const InputEvent& event) const {
    const auto stored = m_settings.globalShortcutModifiers.get();
    verify(stored >= 0, "the stored shortcut's modifier mask must not be negative");
    const auto required = static_cast<ModifierFlags>(stored);
    if (static_cast<std::int64_t>(static_cast<std::uint16_t>(event.keyCode)) !=
        m_settings.globalShortcutKeyCode.get()) {
        return false;
    }
    return (event.modifierFlags & Modifier::deviceIndependentMask & required) == required;
}

void AppDelegate::scheduleStart() {
    m_platform.mainQueue.async([manager = m_sessionManager] { manager->startSession(); });
}

Application& AppDelegate::application() const {
    verify(m_platform.application != nullptr, "the application object must exist when a session window comes or goes");
    return *m_platform.application;
}

SessionWindow& AppDelegate::createSessionWindow() {
    const auto view = std::make_shared<SessionView>(m_sessionManager, m_settings, m_platform);
    const auto screen = m_platform.screens.mainScreenFrame();
    m_sessionWindow = std::make_unique<SessionWindow>(screen.value_or(frameWithoutScreen), StyleMask::borderless,
                                                      BackingStore::buffered, false, m_platform);
    auto& window = m_sessionWindow->window();
    window.setContentView(view);
    window.setLevel(screenSaverWindowLevel);
    window.setCollectionBehavior(Collection::fullScreenPrimary | Collection::canJoinAllSpaces | Collection::stationary);
    window.setOpaqueOnBlack();
    window.setIgnoresMouseEvents(false);
    window.setAcceptsMouseMovedEvents(true);
    if (screen) {
        window.setFrame(*screen, true);
    }
    m_screenObserver = m_platform.notificationCenter.addObserver(
        screenParametersChangedNotification, whileAlive(weak_from_this(), &AppDelegate::followMainScreen));
    return *m_sessionWindow;
}

// Without a main screen the window stays as it is: it is right again, or will be put right, when the screen is back.
void AppDelegate::followMainScreen() {
    if (const auto screen = m_platform.screens.mainScreenFrame(); screen && m_sessionWindow) {
        m_sessionWindow->window().setFrame(*screen, true);
    }
}

void AppDelegate::showSessionWindow() {
    auto& window = (m_sessionWindow ? *m_sessionWindow : createSessionWindow()).window();
    application().setPresentationOptions(
        m_settings.kioskMode.get() ? Presentation::lockdown : Presentation::hideDock | Presentation::hideMenuBar);
    window.makeKeyAndOrderFront();
    window.orderFrontRegardless();
    application().activateIgnoringOtherApps();
}

void AppDelegate::dismissSessionWindow() {
    application().setPresentationOptions(Presentation::none);
    if (m_sessionWindow) {
        m_sessionWindow->window().orderOut();
        m_sessionWindow.reset();
        m_platform.notificationCenter.removeObserver(*m_screenObserver);
        m_screenObserver.reset();
    }
    showSettingsWindow();
}

void AppDelegate::showSettingsWindow() {
    const auto windows = m_platform.windows.windows();
    const auto settingsWindow = std::find_if(windows.begin(), windows.end(), [](const auto& window) {
        return window->title().find("Settings") != std::string::npos;
    });
    if (settingsWindow != windows.end()) {
        (*settingsWindow)->makeKeyAndOrderFront();
    }
}

} // namespace tapalong
