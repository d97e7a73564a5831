#pragma once

namespace tapalong {

class Accessibility;
class Application;
class Biometrics;
class EventMonitors;
class EventTaps;
class InputLimits;
class KeyboardLocks;
class MainQueue;
class NotificationCenter;
class Notices;
class RandomSource;
class Screens;
class StandardOutput;
class SystemSounds;
class Timers;
class UserDefaults;
class Windows;

/// Everything the core asks of a desktop, as one value to hand down. The services outlive all of the core.
struct Platform {
    Accessibility& accessibility;
    Application* application; ///< null only before the desktop is up; who needs it then stops the program
    Biometrics& biometrics;
    EventMonitors& eventMonitors;
    EventTaps& eventTaps;
    InputLimits& inputLimits;
    KeyboardLocks& keyboardLocks;
    MainQueue& mainQueue;
    NotificationCenter& notificationCenter;
    Notices& notices;
    RandomSource& random;
    Screens& screens;
    StandardOutput& standardOutput;
    SystemSounds& systemSounds;
    Timers& timers;
    UserDefaults& userDefaults;
    Windows& windows;
};

} // namespace tapalong
