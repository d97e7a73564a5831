#include "session/SessionManager.h"

#include "base/Fatal.h"
#include "base/WhileAlive.h"
#include "lockdown/KioskManager.h"
#include "platform/RandomSource.h"
#include "platform/Timers.h"
#include "session/ApplicationDelegate.h"
#include "session/ContentLimit.h"
#include "session/EmojiPool.h"
#include "session/RainbowColors.h"
#include "settings/SessionSettings.h"
#include "sound/SoundEngine.h"

#include <utility>

namespace tapalong {

namespace {

constexpr double wipeAfter = 5.0; // seconds of uninterrupted deletes
constexpr int blanksPerTab = 4;

SessionManager* sharedInstance = nullptr;

ApplicationDelegate& sharedDelegate() {
    auto* delegate = ApplicationDelegate::shared();
    verify(delegate != nullptr, "the application delegate must be there before a session starts or ends");
    return *delegate;
}

LockdownOutcome outcomeOf(const KioskManager& kioskManager) {
    if (!kioskManager.hasBeen(Lockdown::missing)) {
        return LockdownOutcome::asWished;
    }
    return kioskManager.hasBeen(Lockdown::inForce) ? LockdownOutcome::partly : LockdownOutcome::never;
}

} // namespace

SessionManager::SessionManager(SessionSettings& settings, const Platform& platform)
    : m_settings(settings), m_platform(platform) {
    sharedInstance = this;
}

SessionManager::~SessionManager() {
    if (sharedInstance == this) {
        sharedInstance = nullptr;
    }
}

SessionManager& SessionManager::shared() {
    verify(sharedInstance != nullptr, "the session manager must exist before it is used");
    return *sharedInstance;
}

void SessionManager::startSession() {
    if (isSessionActive()) {
        return;
    }
    m_isSessionActive.set(true);
    setLastLockdown(LockdownOutcome::asWished);
    m_typedContent.set({});
    m_soundEngine = std::make_unique<SoundEngine>(m_settings, m_platform.systemSounds, m_platform.standardOutput);
    m_kioskManager = std::make_shared<KioskManager>(m_settings, m_platform);
    m_kioskSubscription = m_kioskManager->objectWillChange([this] { sendObjectWillChange(); });
    m_kioskManager->activate(whileAlive(weak_from_this(), &SessionManager::handleKeyEvent));
    sharedDelegate().showSessionWindow();
}

void SessionManager::endSession() {
    if (!isSessionActive()) {
        return;
    }
    auto outcome = LockdownOutcome::asWished;
    if (m_kioskManager) {
        outcome = outcomeOf(*m_kioskManager);
        m_kioskManager->deactivate();
    }
    m_kioskManager.reset();
    m_soundEngine.reset();
    m_isSessionActive.set(false);
    setLastLockdown(outcome);
    m_typedContent.set({});
    sharedDelegate().dismissSessionWindow();
}

bool SessionManager::isLockdownMissing() const {
    return m_kioskManager && m_kioskManager->lockdown() == Lockdown::missing;
}

void SessionManager::setLastLockdown(LockdownOutcome outcome) {
    if (outcome != lastLockdown()) {
        m_lastLockdown.set(outcome);
    }
}

void SessionManager::handleKeyEvent(const KeyEvent& event) {
    using Kind = KeyEvent::Kind;
    const SessionSettings& settings = m_settings;
    if (event.kind != Kind::deleteLast) {
        m_deleteHoldStart.reset();
    }
    switch (event.kind) {
    case Kind::printable:
        appendCharacter(event.character.value(), settings);
        break;
    case Kind::space:
        appendCharacter(Character(" "), settings);
        break;
    case Kind::enter:
        appendCharacter(Character("\n"), settings);
        break;
    case Kind::tab:
        for (int blank = 0; blank < blanksPerTab; ++blank) {
            appendCharacter(Character(" "), settings);
        }
        break;
    case Kind::deleteLast:
        deleteLastOrWipe();
        break;
    case Kind::emoji:
        appendCharacter(EmojiPool::nextAvoiding(m_recentEmoji, m_platform.random), settings);
        break;
    case Kind::celestial:
        appendCharacter(EmojiPool::random(EmojiPool::sky(), m_platform.random), settings);
        break;
    case Kind::suppressed:
        return;
    }
    if (m_soundEngine) {
        m_soundEngine->playKeySound();
    }
}

void SessionManager::deleteLastOrWipe() {
    const double now = m_platform.timers.now();
    if (!m_deleteHoldStart) {
        m_deleteHoldStart = now;
    }
    if (now - *m_deleteHoldStart >= wipeAfter) {
        m_typedContent.set({});
        m_deleteHoldStart.reset();
    } else if (!typedContent().empty()) {
        m_typedContent.mutate([](auto& content) { content.pop_back(); });
    }
}

void SessionManager::appendCharacter(Character character, const SessionSettings& settings) {
    const Color color =
        settings.rainbowMode.get() ? RainbowColors::next(settings.backgroundIsLight()) : settings.foregroundColor();
    m_typedContent.mutate(
        [&](auto& content) { content.emplace_back(std::move(character), color, Uuid::random(m_platform.random)); });
    if (const auto drop = charactersToDrop(typedContent(), settings.maxCharacters.get()); drop > 0) {
        m_typedContent.mutate([drop](auto& content) {
            content.erase(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(drop));
        });
    }
}

} // namespace tapalong
