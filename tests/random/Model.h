#pragma once

#include "platform/Application.h"
#include "platform/simulated/SimulatedInput.h"
#include "random/Event.h"
#include "settings/Color.h"
#include "settings/ScreenCorner.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tapalong::testing {

/// The texts that colours are set to, and what each means.
[[nodiscard]] const std::vector<std::pair<std::string, std::optional<SrgbColor>>>& knownHexTexts();

/// A rule that the model can be told to get wrong, to see that the test notices.
enum class Broken : std::uint8_t {
    nothing,
    trimIgnoresLineBreaks,
    wipeAfterFourSeconds,
    suppressedKeepsTheRun,
    paletteRestartsWithASession,
    emojiRepeat,
    overlayStopsTheTap,
    watchdogIgnoresTheOverlay,
    cornerWithoutItsEdge,
    dwellRestartsWithinTheCorner,
    refusedTapIsNotTriedAgain,
    deletesAreSilent,
    lostTapCountsAsInForce,
    lockdownIsForgottenAtTheEnd,
};
inline constexpr int brokenRules = static_cast<int>(Broken::lockdownIsForgottenAtTheEnd);

/// What the whole application must be like after each event, told anew and as plainly as possible: no observers, no
/// monitors' handlers, no queues. Times are those of the simulated clock.
class Model {
public:
    using Receiver = simulated::SimulatedInput::Receiver;

    struct Settings {
        bool kioskMode = false, rainbowMode = true, useSystemAppearance = true, soundEnabled = true, useTouchID = true,
             modifierKeysTypeEmoji = true;
        std::string fgHex = "#FFFFFF", bgHex = "#1A1A2E", soundPack = "tink", exitPassword;
        ScreenCorner exitCorner = ScreenCorner::topRight;
        double dwellTime = 1.5;
        std::int64_t maxCharacters = 5000, shortcutKeyCode = 17, shortcutModifiers = 0x1C0000;
    };

    struct Overlay {
        std::string password, error;
        bool attempting = false, focused = false;
        std::uint64_t session = 0; ///< the number of the one that it belongs to
    };

    struct Session {
        bool kiosk = false;
        ScreenCorner corner{};
        double dwell = 0, nextPoll = 0, nextWatch = 0;
        bool audible = false, inCorner = false, tap = false, tapIsLost = false;
        bool lockdownWasMissing = false, lockdownWasInForce = false;
        std::optional<double> dwellEnds{}, tapTriedAgainAt{};
        std::shared_ptr<Overlay> overlay{};
        std::uint64_t number = 0;

        [[nodiscard]] bool isTapInForce() const { return tap && !tapIsLost; }
        [[nodiscard]] Point middleOfCorner() const;
    };

    struct Typed {
        std::string text;
        Color color;
    };

    /// How often something worth testing was reached.
    struct Milestones {
        std::uint64_t trims = 0, trimsAtLineBreaks = 0, wipes = 0, tenthDraws = 0, tapsHadLater = 0, tapsLost = 0,
                      recordings = 0, shortcutStarts = 0, passwordEnds = 0, fingerEnds = 0, longestText = 0,
                      sessionsWithoutLockdown = 0;
    };

    enum class MonitorKind : std::uint8_t { shortcut, recorder, session };

    explicit Model(Broken broken) : m_broken(broken) {}

    /// Who should get the event, where it is an input event.
    std::optional<Receiver> apply(const Event& event);

    [[nodiscard]] const Overlay* overlay() const { return session ? session->overlay.get() : nullptr; }
    [[nodiscard]] bool isRecording() const;
    [[nodiscard]] std::size_t timers() const;
    /// Lockdown Mode is wanted and not in force.
    [[nodiscard]] bool isLockdownMissing() const;

    Settings settings;
    std::optional<Session> session;
    std::uint64_t sessionsStarted = 0;
    std::vector<Typed> content;
    std::vector<std::uint64_t> recentEmoji; ///< by their place in the pool
    std::optional<double> deleteHeldSince;
    std::int64_t palette = 0;
    int soundsPlayed = 0; ///< by the last event
    bool lastLockdownWasMissing = false, lastLockdownWasInForce = false;
    Milestones milestones;

    std::vector<MonitorKind> localMonitors{MonitorKind::shortcut}; ///< oldest first
    std::deque<std::shared_ptr<Overlay>> pendingFingers;
    /// When an overlay that came up asks for the finger or takes the focus. One that waits for a finger does so even
    /// after it was taken down.
    std::vector<std::pair<double, std::weak_ptr<Overlay>>> appearances;
    bool settingsOpen = true, granted = true;
    double nextPermissionCheck = 2;
    std::vector<double> grantChecks;

    double now = 0;
    bool ourAppActive = true, trusted = true, tapsAvailable = true, secure = false, hasReader = false, dark = false;
    bool hasScreen = true;
    Point mouse{960, 540};
    PresentationOptions options = 0;

private:
    // Model.cpp
    void applyToDesktop(const Event& event);
    void set(const std::string& key, const DefaultsValue& value);
    void startSession();
    void endSession();
    void installTap();
    void loseTap();
    void noteLockdown();
    void showSettings();
    void stopRecording();
    void restart();

    // Model+Keys.cpp
    struct Posted {
        std::optional<KeyPress> press{};
        bool emoji = false, start = false;
    };
    Receiver deliver(const Event& event);
    [[nodiscard]] bool tapTakes(const Event& event);
    [[nodiscard]] bool localMonitorsTake(const Event& event);
    [[nodiscard]] bool sessionMonitorTakes(const Event& event);
    void recorderSees(const Event& event);
    [[nodiscard]] bool isShortcut(const Event& event) const;
    void postEmojiFor(const Event& event);
    void runPosted(const Event& event);
    void typeIntoField(const Event& event);

    // Model+Content.cpp
    void handle(const Posted& posted, const Event& event);
    void append(std::string text);
    void trim();
    void deleteLast();
    [[nodiscard]] std::string drawEmoji(const Event& event);
    [[nodiscard]] Color nextColor();

    // Model+Time.cpp
    void advance(double seconds);
    [[nodiscard]] double nextInstant() const;
    void fireTimers();
    void watchCorner();
    void presentOverlay();
    void runDelayed();

    // Model+Overlay.cpp
    void applyToOverlay(const Event& event);
    void attemptTouchID(const std::shared_ptr<Overlay>& asking);
    void attemptPassword();
    void answerFinger(const Event& event);

    [[nodiscard]] bool breaks(Broken rule) const { return m_broken == rule; }

    const Broken m_broken;
    std::vector<Posted> m_posted;
};

} // namespace tapalong::testing
