#pragma once

#include "base/Observable.h"
#include "lockdown/KeyEvent.h"
#include "platform/Platform.h"
#include "session/TypedCharacter.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace tapalong {

class KioskManager;
class SessionSettings;
class SoundEngine;

/// How Lockdown Mode went in a session: as its parent wished, missing for a part of it, or missing all along.
enum class LockdownOutcome : std::uint8_t { asWished, partly, never };

/// The model of a typing session: starts and ends it and turns key events into characters on the screen. One
/// instance serves all sessions of the process. Held by shared pointer. Main thread only.
class SessionManager final : public ObservableObject, public std::enable_shared_from_this<SessionManager> {
public:
    SessionManager(SessionSettings& settings, const Platform& platform);
    ~SessionManager();

    /// The one manager of the running program; stops the program when there is none.
    [[nodiscard]] static SessionManager& shared();

    /// Does nothing while a session runs. Needs the shared application delegate.
    void startSession();
    /// Does nothing while none runs. Needs the shared application delegate.
    void endSession();

    [[nodiscard]] bool isSessionActive() const { return m_isSessionActive.get(); }
    /// The characters on the screen, oldest first.
    [[nodiscard]] const TypedContent& typedContent() const { return m_typedContent.get(); }

    /// A session is running in which Lockdown Mode is wanted and at this moment not in force.
    [[nodiscard]] bool isLockdownMissing() const;
    /// Of the session that ended last; asWished before the first one has ended and while one runs.
    [[nodiscard]] LockdownOutcome lastLockdown() const { return m_lastLockdown.get(); }

    /// The lockdown of the running session, present exactly while one runs; for looking at, not for keeping.
    [[nodiscard]] const KioskManager* kioskManager() const { return m_kioskManager.get(); }
    [[nodiscard]] const SoundEngine* soundEngine() const { return m_soundEngine.get(); }
    [[nodiscard]] const std::vector<Character>& recentEmoji() const { return m_recentEmoji; }
    [[nodiscard]] bool isDeleteHeld() const { return m_deleteHoldStart.has_value(); }

private:
    void setLastLockdown(LockdownOutcome outcome);
    void handleKeyEvent(const KeyEvent& event);
    void deleteLastOrWipe();
    void appendCharacter(Character character, const SessionSettings& settings);

    SessionSettings& m_settings;
    const Platform m_platform;
    Published<bool> m_isSessionActive{*this, false};
    Published<TypedContent> m_typedContent{*this, {}};
    Published<LockdownOutcome> m_lastLockdown{*this, LockdownOutcome::asWished};
    std::shared_ptr<KioskManager> m_kioskManager;
    Subscription m_kioskSubscription;
    std::unique_ptr<SoundEngine> m_soundEngine;
    std::vector<Character> m_recentEmoji;
    std::optional<double> m_deleteHoldStart; ///< Timers::now() at the first delete of the run
};

} // namespace tapalong
