#include "session/SessionManager.h"

#include "lockdown/KioskManager.h"
#include "session/RainbowColors.h"
#include "settings/SettingsFixture.test.h"
#include "sound/SoundEngine.h"

#include <memory>

namespace tapalong {
namespace {

using simulated::keyEvent;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyReturn = 36;
constexpr std::int64_t keyTab = 48;
constexpr std::int64_t keySpace = 49;
constexpr std::int64_t keyDelete = 51;
constexpr std::int64_t keyF1 = 122;
const Effects keySound{"sound.stop Tink", "sound.play Tink"};

struct SessionManagerTest : SettingsFixture {
    RecordingDelegate delegate{world.effects};
    std::shared_ptr<SessionManager> manager = std::make_shared<SessionManager>(settings, platform);

    SessionManagerTest() { RainbowColors::reset(); }

    void press(std::int64_t keyCode, std::optional<std::string> text = std::nullopt) {
        world.send(keyEvent(keyCode, 0, std::move(text)));
        world.time.drain();
    }
    void pressSuppressed() { press(keyA); }
    void pressShift() {
        world.send(keyEvent(56, Modifier::shift, std::nullopt, EventType::flagsChanged));
        world.time.drain();
    }
    void type(std::size_t count, const std::string& text = "a") {
        for (std::size_t i = 0; i < count; ++i) {
            press(keyA, text);
        }
    }
    [[nodiscard]] std::string typed() const {
        std::string text;
        for (const auto& each : manager->typedContent()) {
            text += each.character.utf8();
        }
        return text;
    }
    [[nodiscard]] std::size_t count() const { return manager->typedContent().size(); }
};

TEST_F(SessionManagerTest, StartingActivatesTheLockdownAndThenShowsTheWindow) {
    EXPECT_EQ(effectsOf(world, [this] { manager->startSession(); }),
              (Effects{"sound.load Tink", "monitor.addLocal mask=21504",
                       "print ✅ Local event monitor active — keyboard input captured", "monitor.addGlobal mask=96",
                       "timer.every 0.25", "timer.every 0.5", "notification.addObserver showExitOverlay",
                       "notification.addObserver hideExitOverlay", "delegate.showSessionWindow"}));
    EXPECT_TRUE(manager->isSessionActive());
    EXPECT_NE(manager->kioskManager(), nullptr);
    EXPECT_NE(manager->soundEngine(), nullptr);
}

TEST_F(SessionManagerTest, TheSessionIsActiveAndEmptyBeforeItsObjectsAreMade) {
    std::vector<std::string> changes;
    const auto subscription = manager->objectWillChange([&] {
        changes.push_back(
            std::string(manager->isSessionActive() ? "active" : "idle") +
            (manager->kioskManager() != nullptr || manager->soundEngine() != nullptr ? " with objects" : ""));
    });
    manager->startSession();
    EXPECT_EQ(changes, (std::vector<std::string>{"idle", "active"}));
}

TEST_F(SessionManagerTest, EndingTearsTheLockdownDownAndThenDismissesTheWindow) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { manager->endSession(); }),
              (Effects{"monitor.remove", "print 🔓 CGEventTap deactivated — normal input restored", "monitor.remove",
                       "timer.invalidate", "notification.removeObserver", "notification.removeObserver",
                       "delegate.dismissSessionWindow"}));
    EXPECT_FALSE(manager->isSessionActive());
    EXPECT_EQ(manager->kioskManager(), nullptr);
    EXPECT_EQ(manager->soundEngine(), nullptr);
}

TEST_F(SessionManagerTest, TheContentIsClearedAfterTheSessionCountsAsOver) {
    manager->startSession();
    type(2);
    std::vector<std::string> changes;
    const auto subscription = manager->objectWillChange([&] {
        EXPECT_EQ(manager->kioskManager(), nullptr);
        EXPECT_EQ(manager->soundEngine(), nullptr);
        changes.push_back((manager->isSessionActive() ? "active " : "idle ") + typed());
    });
    manager->endSession();
    EXPECT_EQ(changes, (std::vector<std::string>{"active aa", "idle aa"}));
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionManagerTest, StartingTwiceKeepsTheFirstSessionsContentAndObjects) {
    manager->startSession();
    type(1, "x");
    const auto* kiosk = manager->kioskManager();
    const auto* sound = manager->soundEngine();
    EXPECT_TRUE(effectsOf(world, [this] { manager->startSession(); }).empty());
    EXPECT_EQ(typed(), "x");
    EXPECT_EQ(manager->kioskManager(), kiosk);
    EXPECT_EQ(manager->soundEngine(), sound);
}

TEST_F(SessionManagerTest, EndingWhenIdleDoesNotTouchTheSessionWindow) {
    EXPECT_TRUE(effectsOf(world, [this] { manager->endSession(); }).empty());
    manager->startSession();
    manager->endSession();
    EXPECT_TRUE(effectsOf(world, [this] { manager->endSession(); }).empty());
}

TEST_F(SessionManagerTest, EndingReallyDestroysTheLockdown) {
    manager->startSession();
    const std::weak_ptr<const KioskManager> kiosk = manager->kioskManager()->weak_from_this();
    ASSERT_FALSE(kiosk.expired());
    manager->endSession();
    EXPECT_TRUE(kiosk.expired());
    EXPECT_EQ(world.time.timerCount(), 0U);
}

TEST_F(SessionManagerTest, KeysPostedBeforeTheEndAreDropped) {
    manager->startSession();
    world.send(keyEvent(keyA, 0, "a"));
    manager->endSession();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.drain(); }).empty());
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionManagerTest, KeysOfAManagerThatIsGoneDoNothing) {
    manager->startSession();
    world.send(keyEvent(keyA, 0, "a"));
    manager.reset();
    EXPECT_TRUE(effectsOf(world, [this] { world.time.drain(); }).empty());
}

TEST_F(SessionManagerTest, APrintableCharacterIsAppendedWithOneSound) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyA, "é"); }), keySound);
    EXPECT_EQ(typed(), "é");
}

TEST_F(SessionManagerTest, SpaceAndReturnAppendABlankAndALineBreak) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keySpace); }), keySound);
    EXPECT_EQ(effectsOf(world, [this] { press(keyReturn); }), keySound);
    EXPECT_EQ(typed(), " \n");
    EXPECT_TRUE(manager->typedContent().back().character.isLineBreak());
}

TEST_F(SessionManagerTest, ATabAppendsFourBlanksAndPlaysOneSound) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyTab); }), keySound);
    EXPECT_EQ(typed(), "    ");
    EXPECT_EQ(count(), 4U);
}

TEST_F(SessionManagerTest, ATabTakesFourDeletes) {
    manager->startSession();
    press(keyTab);
    press(keyDelete);
    EXPECT_EQ(count(), 3U);
}

TEST_F(SessionManagerTest, EqualCharactersAreToldApart) {
    manager->startSession();
    type(2);
    EXPECT_NE(manager->typedContent()[0].id, manager->typedContent()[1].id);
}

TEST_F(SessionManagerTest, EveryAppendAdvancesThePaletteBlanksAndLineBreaksToo) {
    manager->startSession();
    world.desktop.appearance = Appearance::darkAqua;
    press(keySpace);
    press(keyReturn);
    press(keyTab);
    type(1);
    EXPECT_EQ(RainbowColors::index(), 7);
    RainbowColors::reset();
    for (const auto& each : manager->typedContent()) {
        EXPECT_EQ(each.color, RainbowColors::next(false));
    }
}

TEST_F(SessionManagerTest, DeletesAndSuppressedKeysLeaveThePaletteAlone) {
    manager->startSession();
    type(1);
    press(keyDelete);
    pressSuppressed();
    EXPECT_EQ(RainbowColors::index(), 1);
}

TEST_F(SessionManagerTest, OnALightBackgroundColoursAreDarkened) {
    manager->startSession();
    world.desktop.appearance = Appearance::aqua;
    type(1);
    RainbowColors::reset();
    EXPECT_EQ(manager->typedContent()[0].color, RainbowColors::next(true));
}

TEST_F(SessionManagerTest, ThePaletteGoesOnInTheNextSession) {
    manager->startSession();
    type(4);
    manager->endSession();
    manager->startSession();
    type(1);
    EXPECT_EQ(RainbowColors::index(), 5);
}

TEST_F(SessionManagerTest, WithoutTheRainbowCharactersTakeTheForegroundColour) {
    settings.rainbowMode.set(false);
    settings.useSystemAppearance.set(false);
    settings.customFGColorHex.set("#FF8000");
    manager->startSession();
    type(1);
    EXPECT_EQ(manager->typedContent()[0].color, Color::fromHex("#FF8000"));
    EXPECT_EQ(RainbowColors::index(), 0);
}

TEST_F(SessionManagerTest, TheSystemsTextColourStaysNamedInWhatWasTyped) {
    settings.rainbowMode.set(false);
    manager->startSession();
    type(1);
    world.desktop.appearance = Appearance::darkAqua;
    EXPECT_EQ(manager->typedContent()[0].color, Color(NamedColor::primary));
}

TEST_F(SessionManagerTest, DeleteRemovesTheLastCharacterWithASound) {
    manager->startSession();
    type(1, "a");
    type(1, "b");
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(typed(), "a");
}

TEST_F(SessionManagerTest, DeleteOnAnEmptyScreenPlaysASoundAndLeavesItEmpty) {
    manager->startSession();
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(count(), 0U);
}

TEST_F(SessionManagerTest, ADeleteFiveSecondsAfterTheFirstWipesTheScreen) {
    manager->startSession();
    type(20);
    press(keyDelete);
    world.time.advance(4.875);
    press(keyDelete);
    EXPECT_EQ(count(), 18U);
    world.time.advance(0.125);
    EXPECT_EQ(effectsOf(world, [this] { press(keyDelete); }), keySound);
    EXPECT_EQ(count(), 0U);
    EXPECT_FALSE(manager->isDeleteHeld());
}

TEST_F(SessionManagerTest, TheDeleteAfterAWipeStartsANewRun) {
    manager->startSession();
    type(5);
    press(keyDelete);
    world.time.advance(6);
    press(keyDelete);
    EXPECT_EQ(count(), 0U);
    press(keyDelete);
    EXPECT_TRUE(manager->isDeleteHeld());
    type(3);
    press(keyDelete);
    EXPECT_EQ(count(), 2U) << "typing began another run";
}

TEST_F(SessionManagerTest, TheFiveSecondsCountFromTheFirstDeletePausesIncluded) {
    manager->startSession();
    type(10);
    press(keyDelete);
    world.time.advance(60);
    press(keyDelete);
    EXPECT_EQ(count(), 0U) << "no other key came between";
}

TEST_F(SessionManagerTest, AnyOtherKeyRestartsTheFiveSeconds) {
    manager->startSession();
    type(10);
    press(keyDelete);
    world.time.advance(4);
    type(1);
    press(keyDelete);
    world.time.advance(4);
    press(keyDelete);
    EXPECT_EQ(count(), 8U);
}

TEST_F(SessionManagerTest, ASuppressedKeyEndsTheRunAndPlaysNoSound) {
    manager->startSession();
    type(3);
    press(keyDelete);
    EXPECT_TRUE(manager->isDeleteHeld());
    EXPECT_TRUE(effectsOf(world, [this] { pressSuppressed(); }).empty());
    EXPECT_FALSE(manager->isDeleteHeld());
    world.time.advance(5);
    press(keyDelete);
    EXPECT_EQ(count(), 1U);
}

TEST_F(SessionManagerTest, ARunOfDeletesSurvivesTheSessionsEnd) {
    manager->startSession();
    press(keyDelete);
    manager->endSession();
    world.time.advance(5);
    manager->startSession();
    EXPECT_TRUE(manager->isDeleteHeld());
    press(keyDelete);
    EXPECT_FALSE(manager->isDeleteHeld()) << "the old run was long enough to wipe";
}

TEST_F(SessionManagerTest, AModifierTypesAnEmojiAndRemembersIt) {
    manager->startSession();
    world.random.scripted = {3};
    EXPECT_EQ(effectsOf(world, [this] { pressShift(); }), keySound);
    EXPECT_EQ(typed(), "🐻");
    EXPECT_EQ(manager->recentEmoji(), std::vector<Character>{Character("🐻")});
}

TEST_F(SessionManagerTest, AnEmojiOfTheLastEightIsAvoided) {
    manager->startSession();
    world.random.scripted = {0, 1, 2, 3, 4, 5, 6, 7};
    for (int i = 0; i < 8; ++i) {
        pressShift();
    }
    world.random.scripted = {0, 7, 8};
    pressShift();
    EXPECT_EQ(manager->typedContent().back().character.utf8(), "🐷");
    EXPECT_EQ(manager->recentEmoji().size(), 8U);
}

TEST_F(SessionManagerTest, RecentEmojiAreKeptFromSessionToSession) {
    manager->startSession();
    pressShift();
    pressShift();
    const auto before = manager->recentEmoji();
    manager->endSession();
    EXPECT_EQ(manager->recentEmoji(), before);
    manager->startSession();
    EXPECT_EQ(manager->recentEmoji(), before);
}

TEST_F(SessionManagerTest, FunctionKeysTypeTheSkyRepeatsIncluded) {
    manager->startSession();
    for (std::uint64_t i = 0; i < 15; ++i) {
        world.random.scripted.push_back(i);
        press(keyF1);
    }
    EXPECT_EQ(typed(), "🌙⭐🌟☀\uFE0F🌈☁\uFE0F🌤⚡❄\uFE0F🪐🌍🌕💫✨🌊");
    world.random.scripted = {2, 2};
    press(keyF1);
    press(keyF1);
    EXPECT_EQ(typed().substr(typed().size() - 8), "🌟🌟");
    EXPECT_TRUE(manager->recentEmoji().empty());
}

TEST_F(SessionManagerTest, TheCharacterPastTheLimitTrimsThirtyPerCent) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(100);
    EXPECT_EQ(count(), 100U);
    type(1);
    EXPECT_EQ(count(), 71U);
}

TEST_F(SessionManagerTest, TheTrimPrefersToCutBehindALineBreak) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(35);
    press(keyReturn);
    press(keyA, "b");
    type(64);
    EXPECT_EQ(count(), 65U) << "36 of 101 are gone, the line break last";
    EXPECT_EQ(manager->typedContent().front().character.utf8(), "b");
}

TEST_F(SessionManagerTest, WithALimitOfNothingTheContentGrowsToFour) {
    settings.maxCharacters.set(0);
    manager->startSession();
    type(3);
    EXPECT_EQ(count(), 3U);
    type(1);
    EXPECT_EQ(count(), 3U) << "the fourth removed one";
}

TEST_F(SessionManagerTest, TheTrimRunsInsideATabToo) {
    settings.maxCharacters.set(10);
    manager->startSession();
    type(9);
    press(keyTab);
    EXPECT_EQ(count(), 10U) << "the second blank made eleven and removed three, two more followed";
}

TEST_F(SessionManagerTest, ATrimIsOneChange) {
    settings.maxCharacters.set(100);
    manager->startSession();
    type(100);
    int changes = 0;
    const auto subscription = manager->objectWillChange([&] { ++changes; });
    type(1);
    EXPECT_EQ(changes, 2) << "the append and the trim";
}

TEST_F(SessionManagerTest, ObserversAreToldBeforeTheContentChanges) {
    manager->startSession();
    std::size_t seen = 99;
    const auto subscription = manager->objectWillChange([&] { seen = count(); });
    type(1);
    EXPECT_EQ(seen, 0U);
}

TEST_F(SessionManagerTest, AHundredSessionsLeaveNoMoreBehindThanOne) {
    const auto session = [this] {
        manager->startSession();
        type(3);
        world.time.advance(1);
        manager->endSession();
        world.time.advance(1);
    };
    session();
    const auto monitors = world.input.localMonitorCount() + world.input.globalMonitorCount();
    const auto observers = world.notificationCenter.observerCount();
    const auto timers = world.time.timerCount();
    for (int i = 1; i < 100; ++i) {
        session();
    }
    EXPECT_EQ(world.input.localMonitorCount() + world.input.globalMonitorCount(), monitors);
    EXPECT_EQ(world.notificationCenter.observerCount(), observers);
    EXPECT_EQ(world.time.timerCount(), timers);
    EXPECT_EQ(timers, 0U);
    EXPECT_EQ(world.input.tapCount(), 0U);
}

TEST_F(SessionManagerTest, TheSharedManagerIsTheOneThatLives) {
    EXPECT_EQ(&SessionManager::shared(), manager.get());
    const auto newer = std::make_shared<SessionManager>(settings, platform);
    manager.reset();
    EXPECT_EQ(&SessionManager::shared(), newer.get());
}

using SessionManagerDeathTest = SessionManagerTest;

TEST_F(SessionManagerDeathTest, WithoutAManagerTheDoorStopsTheProgram) {
    manager.reset();
    EXPECT_DEATH(std::ignore = SessionManager::shared(), "the session manager must exist");
}

TEST_F(SessionManagerDeathTest, StartingWithoutADelegateStopsTheProgram) {
    ApplicationDelegate::setShared(nullptr);
    EXPECT_DEATH(manager->startSession(), "application delegate must be there before a session starts or ends");
}

TEST_F(SessionManagerDeathTest, EndingWithoutADelegateStopsTheProgram) {
    manager->startSession();
    ApplicationDelegate::setShared(nullptr);
    EXPECT_DEATH(manager->endSession(), "application delegate must be there before a session starts or ends");
}

} // namespace
} // namespace tapalong
