#pragma once

#include "base/Observable.h"
#include "platform/UserDefaults.h"
#include "settings/Color.h"
#include "settings/Preference.h"
#include "settings/ScreenCorner.h"

#include <cstdint>
#include <string>

namespace tapalong {

class Application;

/// Every preference of the program. Others read it at the moment of use and keep no copies. Main thread only.
class SessionSettings final : public ObservableObject {
public:
    /// Writes nothing. `application` is asked for the desktop's appearance; it may be null as long as nobody needs
    /// that.
    SessionSettings(UserDefaults& defaults, Application* application);
    ~SessionSettings();

    /// The one store of the running program; stops the program when there is none.
    [[nodiscard]] static SessionSettings& shared();

private:
    UserDefaults& m_defaults; // before the preferences, which are made with it
    Application* m_application;

    template <class T> Preference<T> preference(const char* key, T defaultValue) {
        return Preference<T>(*this, m_defaults, key, std::move(defaultValue));
    }

public:
    Preference<double> fontSize = preference("fontSize", 72.0); ///< points
    Preference<bool> useSystemAppearance = preference("useSystemAppearance", true);
    Preference<bool> darkMode = preference("darkMode", false); ///< stored only: no colour follows it
    Preference<bool> rainbowMode = preference("rainbowMode", true);
    Preference<std::string> customFGColorHex = preference<std::string>("customFGColorHex", "#FFFFFF");
    Preference<std::string> customBGColorHex = preference<std::string>("customBGColorHex", "#1A1A2E");
    Preference<bool> soundEnabled = preference("soundEnabled", true);
    Preference<std::string> selectedSoundPack = preference<std::string>("selectedSoundPack", "tink");
    Preference<ScreenCorner> exitCorner = preference("exitCorner", ScreenCorner::topRight);
    Preference<std::string> exitPassword = preference<std::string>("exitPassword", ""); ///< empty: not set
    Preference<bool> useTouchID = preference("useTouchID", true);
    Preference<double> hotCornerDwellTime = preference("hotCornerDwellTime", 1.5); ///< seconds
    Preference<std::int64_t> globalShortcutKeyCode = preference<std::int64_t>("globalShortcutKeyCode", 17);
    Preference<std::int64_t> globalShortcutModifiers = preference<std::int64_t>("globalShortcutModifiers", 0x1C0000);
    Preference<bool> kioskMode = preference("kioskMode", false); ///< Lockdown Mode
    Preference<std::int64_t> maxCharacters = preference<std::int64_t>("maxCharacters", 5000);
    Preference<bool> showCursor = preference("showCursor", true);
    Preference<bool> modifierKeysTypeEmoji = preference("modifierKeysTypeEmoji", true);

    /// The colour of typed characters while rainbow mode is off.
    [[nodiscard]] Color foregroundColor() const;
    /// The session window's background. Needs the application object while the system appearance is followed.
    [[nodiscard]] Color backgroundColor() const;
    /// Whether text on the background should be dark.
    [[nodiscard]] bool backgroundIsLight() const;
};

} // namespace tapalong
