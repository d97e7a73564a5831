#include "app/TapalongApp.h"

#include "app/ApplicationFixture.test.h"
#include "lockdown/KioskManager.h"
#include "sound/SoundEngine.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

#include <algorithm>

namespace tapalong {
namespace {

constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyT = 17;
constexpr ModifierFlags controlOptionCommand = Modifier::control | Modifier::option | Modifier::command;

struct TapalongAppTest : ApplicationFixture {
    struct Remains {
        std::size_t timers;
        std::size_t locals;
        std::size_t globals;
        std::size_t taps;
        std::size_t observers;
        std::size_t windows;

        bool operator==(const Remains&) const = default;
    };
    Remains remains() {
        return {world.time.timerCount(), world.input.localMonitorCount(),          world.input.globalMonitorCount(),
                world.input.tapCount(),  world.notificationCenter.observerCount(), world.desktop.windows().size()};
    }
    [[nodiscard]] std::string typed() const {
        std::string text;
        for (const auto& each : manager.typedContent()) {
            text += each.character.utf8();
        }
        return text;
    }
    void wholeSession() {
        app.settingsView()->startSession();
        type("a");
        holdCorner();
        world.input.setSecureInput(true);
        unlock("open sesame");
        world.input.setSecureInput(false);
        world.time.advance(1);
    }
};

TEST_F(TapalongAppTest, ItsOneSceneIsTheSettingsWindow) {
    const auto scene = app.body();
    EXPECT_EQ(scene.title, "Tapalong Settings");
    EXPECT_EQ(scene.identifier, "settings");
    EXPECT_EQ(scene.content, app.settingsView());
    EXPECT_EQ(scene.width, 500);
    EXPECT_EQ(scene.minHeight, 600);
    EXPECT_TRUE(scene.centred);
}

TEST_F(TapalongAppTest, EverybodySharesOneStoreOneManagerAndOneDelegate) {
    EXPECT_EQ(&SessionSettings::shared(), &app.settings());
    EXPECT_EQ(&SessionManager::shared(), &app.sessionManager());
    EXPECT_EQ(AppDelegate::shared(), &app.appDelegate());
}

TEST_F(TapalongAppTest, TheWholeCycleFromSettingsToSettings) {
    app.settingsView()->startSession();
    ASSERT_NE(sessionView(), nullptr);
    EXPECT_TRUE(sessionView()->showsLockdownNotice());
    type("h");
    type("i");
    EXPECT_EQ(typed(), "hi");
    holdCorner();
    ASSERT_NE(sessionView()->exitOverlay(), nullptr);
    unlock("wrong");
    EXPECT_EQ(sessionView()->exitOverlay()->errorMessage(), "Incorrect password");
    EXPECT_TRUE(manager.isSessionActive());
    unlock("open sesame");
    EXPECT_FALSE(manager.isSessionActive());
    EXPECT_EQ(sessionView(), nullptr);
    EXPECT_EQ(world.effects.all().back(), "window[Tapalong Settings].makeKeyAndOrderFront");
    EXPECT_EQ(world.desktop.presentationOptions, Presentation::none);
}

TEST_F(TapalongAppTest, StartingInLockdownActivatesItBeforeTheWindowIsMade) {
    settings.kioskMode.set(true);
    const auto effects = effectsOf(world, [this] { manager.startSession(); });
    const auto position = [&](const std::string& line) {
        return std::find(effects.begin(), effects.end(), line) - effects.begin();
    };
    EXPECT_LT(position("sound.load Tink"), position("tap.enable"));
    EXPECT_LT(position("tap.enable"), position("notification.addObserver hideExitOverlay"));
    EXPECT_LT(position("notification.addObserver hideExitOverlay"), position("window.contentView"));
    EXPECT_LT(position("window.contentView"), position("app.presentationOptions 506"));
    EXPECT_EQ(effects.back(), "app.activate");
}

TEST_F(TapalongAppTest, CancellingTheOverlayGoesBackToTyping) {
    manager.startSession();
    holdCorner();
    sessionView()->exitOverlay()->dismiss();
    EXPECT_EQ(sessionView()->exitOverlay(), nullptr);
    type("a");
    EXPECT_EQ(typed(), "a");
    holdCorner();
    EXPECT_NE(sessionView()->exitOverlay(), nullptr) << "the corner works again";
}

TEST_F(TapalongAppTest, WithoutLockdownTypingWhileTheOverlayShowsGoesToItsField) {
    manager.startSession();
    holdCorner();
    EXPECT_EQ(type("a"), Receiver::ownWindow);
    EXPECT_EQ(typed(), "");
}

TEST_F(TapalongAppTest, InLockdownThePasswordCanBeTypedThroughSecureInput) {
    settings.kioskMode.set(true);
    settings.exitPassword.set("ab");
    manager.startSession();
    holdCorner();
    const auto overlay = sessionView()->exitOverlay();
    world.input.setSecureInput(true);
    world.input.setWindowHandler(
        [&](const InputEvent& event) { overlay->setPassword(overlay->password() + event.text().value_or("")); });
    type("a");
    type("b");
    EXPECT_EQ(typed(), "") << "the password never shows on the screen";
    overlay->attemptPassword();
    EXPECT_FALSE(manager.isSessionActive());
}

TEST_F(TapalongAppTest, AFingerEndsTheSession) {
    settings.useTouchID.set(true);
    world.biometrics.available = true;
    manager.startSession();
    holdCorner();
    ASSERT_TRUE(world.biometrics.reply(true, std::nullopt));
    world.time.drain();
    EXPECT_FALSE(manager.isSessionActive());
    EXPECT_EQ(sessionView(), nullptr);
}

TEST_F(TapalongAppTest, SuccessDoesNotPostThatTheOverlayIsHidden) {
    manager.startSession();
    holdCorner();
    const auto effects = effectsOf(world, [this] { unlock("open sesame"); });
    EXPECT_EQ(std::count(effects.begin(), effects.end(), "notification.post hideExitOverlay"), 0);
}

TEST_F(TapalongAppTest, TheGlowFollowsTheSettingWhileTheTriggerKeepsItsCorner) {
    manager.startSession();
    settings.exitCorner.set(ScreenCorner::bottomLeft);
    EXPECT_EQ(sessionView()->glowCentre(100, 50), (Point{0, 50}));
    holdCorner();
    EXPECT_NE(sessionView()->exitOverlay(), nullptr) << "top right still opens it";
}

TEST_F(TapalongAppTest, TheEndDestroysLockdownSoundAndView) {
    settings.kioskMode.set(true);
    manager.startSession();
    const std::weak_ptr<const KioskManager> kiosk = manager.kioskManager()->weak_from_this();
    const std::weak_ptr<SessionView> view = sessionView();
    holdCorner();
    unlock("open sesame");
    EXPECT_TRUE(kiosk.expired());
    EXPECT_TRUE(view.expired());
    EXPECT_EQ(manager.soundEngine(), nullptr);
}

TEST_F(TapalongAppTest, AFingerprintStillPendingKeepsNeitherLockdownNorView) {
    settings.useTouchID.set(true);
    world.biometrics.available = true;
    manager.startSession();
    const std::weak_ptr<const KioskManager> kiosk = manager.kioskManager()->weak_from_this();
    const std::weak_ptr<SessionView> view = sessionView();
    holdCorner();
    ASSERT_EQ(world.biometrics.pendingCount(), 1U);
    unlock("open sesame");
    EXPECT_TRUE(kiosk.expired());
    EXPECT_TRUE(view.expired());
}

TEST_F(TapalongAppTest, ALateFingerprintEndsNoLaterSession) {
    settings.useTouchID.set(true);
    world.biometrics.available = true;
    manager.startSession();
    holdCorner();
    unlock("open sesame");
    manager.startSession();
    ASSERT_TRUE(world.biometrics.reply(true, std::nullopt));
    world.time.drain();
    EXPECT_TRUE(manager.isSessionActive());
}

TEST_F(TapalongAppTest, AForgottenRecordingEndsWhenASessionStarts) {
    auto& recorder = app.settingsView()->shortcutRecorder();
    recorder.startRecordingShortcut();
    manager.startSession();
    EXPECT_FALSE(recorder.isRecordingShortcut());
    EXPECT_EQ(settings.globalShortcutKeyCode.get(), 17);
}

TEST_F(TapalongAppTest, ALatePermissionCheckOfAnEndedSessionInstallsNoTap) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    manager.startSession();
    world.time.advance(1);
    manager.endSession();
    world.input.setTapsAvailable(true);
    const auto effects = effectsOf(world, [this] { world.time.advance(5); });
    EXPECT_TRUE(std::none_of(effects.begin(), effects.end(), [](const auto& line) { return line.find("tap.") == 0; }));
    EXPECT_EQ(world.input.tapCount(), 0U);
}

TEST_F(TapalongAppTest, AHundredSessionsLeaveNoMoreBehindThanOne) {
    for (const bool kioskMode : {false, true}) {
        settings.kioskMode.set(kioskMode);
        wholeSession();
        const auto afterOne = remains();
        for (int i = 1; i < 100; ++i) {
            wholeSession();
        }
        EXPECT_FALSE(manager.isSessionActive());
        EXPECT_TRUE(remains() == afterOne);
        EXPECT_EQ(remains().timers, 1U) << "the settings window watches the permission";
        EXPECT_EQ(remains().observers, 0U);
        EXPECT_EQ(remains().taps, 0U);
        EXPECT_EQ(remains().windows, 1U);
    }
}

TEST_F(TapalongAppTest, TheQuickStartStartsASessionFromAnotherProgramsWindow) {
    world.desktop.active = false;
    pressQuickStart();
    EXPECT_TRUE(manager.isSessionActive());
    EXPECT_TRUE(world.desktop.active);
}

TEST_F(TapalongAppTest, TheQuickStartDuringASessionTypesNothingElseAndChangesNothing) {
    manager.startSession();
    type("a");
    const auto* kiosk = manager.kioskManager();
    pressQuickStart();
    EXPECT_EQ(manager.kioskManager(), kiosk);
    EXPECT_EQ(typed().substr(0, 1), "a") << "the session goes on";
}

TEST_F(TapalongAppTest, ARecordedShortcutStartsTheNextSession) {
    app.settingsView()->shortcutRecorder().startRecordingShortcut();
    press(keyK, Modifier::command | Modifier::shift);
    EXPECT_FALSE(manager.isSessionActive()) << "recording it starts nothing";
    press(keyT, controlOptionCommand);
    EXPECT_FALSE(manager.isSessionActive()) << "the old one is gone";
    press(keyK, Modifier::command | Modifier::shift);
    EXPECT_TRUE(manager.isSessionActive());
}

TEST_F(TapalongAppTest, PressingThePresentShortcutWhileRecordingRecordsItAndStartsNothing) {
    auto& recorder = app.settingsView()->shortcutRecorder();
    recorder.startRecordingShortcut();
    EXPECT_EQ(pressQuickStart(Modifier::shift), Receiver::localMonitor);
    world.time.advance(1);
    EXPECT_FALSE(manager.isSessionActive());
    EXPECT_FALSE(recorder.isRecordingShortcut());
    EXPECT_EQ(settings.globalShortcutKeyCode.get(), keyT);
    EXPECT_EQ(settings.globalShortcutModifiers.get(), 0x1E0000);
}

TEST_F(TapalongAppTest, RecordingAcceptedKeysRegistersAfterTheRecordersOwnMonitorIsGone) {
    app.settingsView()->shortcutRecorder().startRecordingShortcut();
    EXPECT_EQ(effectsOf(world, [this] { press(keyK, Modifier::command); }),
              (Effects{"defaults.set globalShortcutKeyCode", "defaults.set globalShortcutModifiers", "monitor.remove",
                       "monitor.remove", "monitor.addGlobal mask=1024", "monitor.addLocal mask=1024"}));
}

TEST_F(TapalongAppTest, ClosingTheSettingsWindowEndsItsWatchAndItsRecording) {
    app.settingsView()->shortcutRecorder().startRecordingShortcut();
    world.desktop.closeScene();
    EXPECT_EQ(world.time.timerCount(), 0U);
    EXPECT_FALSE(app.settingsView()->shortcutRecorder().isRecordingShortcut());
}

TEST_F(TapalongAppTest, EverySettingSurvivesARestart) {
    settings.fontSize.set(100);
    settings.kioskMode.set(true);
    settings.exitCorner.set(ScreenCorner::bottomLeft);
    TapalongApp restarted(world.platform());
    EXPECT_EQ(restarted.settings().fontSize.get(), 100);
    EXPECT_TRUE(restarted.settings().kioskMode.get());
    EXPECT_EQ(restarted.settings().exitCorner.get(), ScreenCorner::bottomLeft);
    EXPECT_EQ(restarted.settings().exitPassword.get(), "open sesame");
}

} // namespace
} // namespace tapalong
