#pragma once

#include "app/DesktopInput.h"
#include "app/DesktopLimits.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "platform/desktop/JsonUserDefaults.h"
#include "platform/desktop/LimitBoard.h"
#include "platform/desktop/NoBiometrics.h"
#include "platform/desktop/NoticeBoard.h"
#include "platform/desktop/QtApplication.h"
#include "platform/desktop/QtMainQueue.h"
#include "platform/desktop/QtScreens.h"
#include "platform/desktop/QtTimers.h"
#include "platform/desktop/QtWindows.h"
#include "platform/desktop/StdOutput.h"
#include "platform/desktop/StdRandomSource.h"
#include "platform/linux/dbus/DesktopInhibitors.h"
#include "platform/linux/dbus/PortalAppearance.h"
#include "platform/linux/sound/PulseSystemSounds.h"

#include <memory>

namespace tapalong {

/// The services of the desktop that the program runs on. Made after the QGuiApplication, gone before it.
class DesktopPlatform {
public:
    DesktopPlatform();

    [[nodiscard]] Platform platform();
    [[nodiscard]] QtWindows& windows() { return m_windows; }

private:
    [[nodiscard]] WindowTraits windowTraits();

    NoticeBoard m_notices;
    LimitBoard m_limits;
    NotificationCenter m_notificationCenter;
    StdOutput m_standardOutput;
    StdRandomSource m_random;
    QtMainQueue m_mainQueue;
    QtTimers m_timers;
    JsonUserDefaults m_userDefaults;
    PulseSystemSounds m_systemSounds;
    NoBiometrics m_biometrics;
    PortalAppearance m_appearance;
    std::unique_ptr<DesktopInput> m_input;
    QtScreens m_screens;
    QtWindows m_windows;
    DesktopInhibitors m_inhibitors;
    QtApplication m_application;
    DesktopLimits m_limitFinder;
};

} // namespace tapalong
