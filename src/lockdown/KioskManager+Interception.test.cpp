#include "lockdown/KioskFixture.test.h"

namespace tapalong {
namespace {

struct InterceptionTest : KioskFixture {
    /// The simulated desktop with other monitors or taps.
    Platform withServices(EventMonitors& monitors, EventTaps& taps) {
        const auto usual = world.platform();
        return {.accessibility = usual.accessibility,
                .application = usual.application,
                .biometrics = usual.biometrics,
                .eventMonitors = monitors,
                .eventTaps = taps,
                .inputLimits = usual.inputLimits,
                .keyboardLocks = usual.keyboardLocks,
                .mainQueue = usual.mainQueue,
                .notificationCenter = usual.notificationCenter,
                .notices = usual.notices,
                .random = usual.random,
                .screens = usual.screens,
                .standardOutput = usual.standardOutput,
                .systemSounds = usual.systemSounds,
                .timers = usual.timers,
                .userDefaults = usual.userDefaults,
                .windows = usual.windows};
    }
};

/// Hands its callback out, so that events can be given to it which no mask asks for.
struct BareTaps final : EventTaps {
    Callback callback;
    std::vector<bool> enabled;

    [[nodiscard]] std::optional<TapHandle> createTap(TapLocation, TapPlacement, TapOptions, EventMask,
                                                     Callback given) override {
        callback = std::move(given);
        return TapHandle{1};
    }
    void enableTap(TapHandle, bool enable) override { enabled.push_back(enable); }
    [[nodiscard]] bool isTapEnabled(TapHandle) const override { return !enabled.empty() && enabled.back(); }
    [[nodiscard]] RunLoopSource createRunLoopSource(TapHandle) override { return RunLoopSource{1}; }
    void addSource(RunLoopSource) override {}
    void removeSource(RunLoopSource) override {}
};

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyQ = 12;
constexpr std::int64_t keyTab = 48;
constexpr std::int64_t keySpace = 49;
constexpr std::int64_t keyHome = 115;

TEST_F(InterceptionTest, WithoutLockdownAKeyReachesTheHandlerAndGoesOnToTheWindow) {
    activate();
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::ownWindow);
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, TheHandlerIsNeverCalledFromInsideTheDelivery) {
    activate();
    world.send(simulated::keyEvent(keyA, 0, "a"));
    EXPECT_TRUE(handled.empty());
    world.time.drain();
    EXPECT_EQ(handled.size(), 1U);
}

TEST_F(InterceptionTest, AKeyIsClassifiedWhenItIsDeliveredNotWhenItIsHandled) {
    activate();
    world.send(simulated::keyEvent(keyHome, 0, "x"));
    settings.kioskMode.set(true); // from here on the key would be suppressed
    world.time.drain();
    EXPECT_EQ(handled, std::vector<std::string>{"'x'"});
}

TEST_F(InterceptionTest, TheTapReadsAKeysTextWhenItIsDeliveredToo) {
    activateLocked();
    std::string text = "a";
    world.send({.keyCode = keyA, .characters = [&text] { return std::optional(text); }});
    text = "b";
    world.time.drain();
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, TheHandlerIsLookedUpWhenTheKeyIsHandled) {
    activate();
    world.send(simulated::keyEvent(keyA, 0, "a"));
    std::vector<std::string> others;
    kiosk->deactivate();
    kiosk->activate([&](const KeyEvent& event) { others.push_back(describe(event)); });
    world.time.drain();
    EXPECT_TRUE(handled.empty());
    EXPECT_EQ(others, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, AnEmptyHandlerIsNotCalled) {
    kiosk->activate(nullptr);
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::ownWindow);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, KeysPostedToAManagerThatIsGoneAreDropped) {
    activate();
    world.send(simulated::keyEvent(keyA, 0, "a"));
    kiosk.reset();
    world.time.drain();
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, SwitchingLockdownOnLaterChangesTheClassificationAndNotTheSwallowing) {
    activate();
    settings.kioskMode.set(true);
    EXPECT_EQ(press(keyQ, Modifier::command, "q"), Receiver::ownWindow) << "swallowing was decided at set-up";
    EXPECT_EQ(handled, std::vector<std::string>{"suppressed"}) << "classification asks at each key";
}

TEST_F(InterceptionTest, SwitchingLockdownOffLaterLeavesTheMonitorSwallowing) {
    activateLocked();
    settings.kioskMode.set(false);
    world.input.setSecureInput(true); // keys bypass the tap and reach the monitor
    EXPECT_EQ(press(keyQ, Modifier::command, "q"), Receiver::localMonitor);
    EXPECT_EQ(handled, std::vector<std::string>{"'q'"});
}

TEST_F(InterceptionTest, InLockdownTheMonitorSwallowsKeysModifiersAndMediaKeys) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    activate();
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::localMonitor);
    EXPECT_EQ(modifiers(Modifier::shift), Receiver::localMonitor);
    EXPECT_EQ(send(EventType::systemDefined), Receiver::localMonitor);
    EXPECT_EQ(handled, (std::vector<std::string>{"'a'", "emoji"}));
}

TEST_F(InterceptionTest, WithoutLockdownTheMonitorLetsMediaKeysPassUnhandled) {
    activate();
    EXPECT_EQ(send(EventType::systemDefined), Receiver::ownWindow);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, WithoutLockdownModifiersTypeEmojiAndPass) {
    activate();
    EXPECT_EQ(modifiers(Modifier::shift), Receiver::ownWindow);
    EXPECT_EQ(handled, std::vector<std::string>{"emoji"});
}

TEST_F(InterceptionTest, EachListedModifierTypesOneEmojiAndNoOtherBitDoes) {
    activate();
    for (const auto flag :
         {Modifier::command, Modifier::option, Modifier::control, Modifier::shift, Modifier::capsLock}) {
        handled.clear();
        modifiers(flag);
        EXPECT_EQ(handled, std::vector<std::string>{"emoji"}) << flag;
    }
    handled.clear();
    modifiers(Modifier::function | Modifier::numericPad | Modifier::help | 0xFFFF);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, WhetherModifiersTypeEmojiIsAskedAtEachEvent) {
    activateLocked();
    settings.modifierKeysTypeEmoji.set(false);
    EXPECT_EQ(modifiers(Modifier::shift), Receiver::tap) << "swallowed all the same";
    EXPECT_TRUE(handled.empty());
    settings.modifierKeysTypeEmoji.set(true);
    modifiers(Modifier::shift);
    EXPECT_EQ(handled.size(), 1U);
}

TEST_F(InterceptionTest, TheMonitorAsksForModifierEmojiAtEachEventToo) {
    activate();
    settings.modifierKeysTypeEmoji.set(false);
    modifiers(Modifier::shift);
    EXPECT_TRUE(handled.empty());
    settings.modifierKeysTypeEmoji.set(true);
    modifiers(Modifier::shift);
    EXPECT_EQ(handled.size(), 1U);
}

TEST_F(InterceptionTest, ReleasingTheLastModifierTypesNoEmojiAndIsStillSwallowed) {
    activateLocked();
    EXPECT_EQ(modifiers(0), Receiver::tap);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, ReleasingShiftWithCapsLockOnTypesAnEmoji) {
    activateLocked();
    EXPECT_EQ(modifiers(Modifier::capsLock), Receiver::tap);
    EXPECT_EQ(handled, std::vector<std::string>{"emoji"});
}

TEST_F(InterceptionTest, EachChangeThatLeavesAModifierDownTypesOneEmoji) {
    activateLocked();
    modifiers(Modifier::command);
    modifiers(Modifier::command | Modifier::shift);
    modifiers(Modifier::shift);
    modifiers(0);
    EXPECT_EQ(handled.size(), 3U);
}

TEST_F(InterceptionTest, SystemShortcutsAreSwallowedByTheTapAndDeliveredClassified) {
    activateLocked();
    EXPECT_EQ(modifiers(Modifier::command), Receiver::tap);
    EXPECT_EQ(press(keyTab, Modifier::command), Receiver::tap);
    EXPECT_EQ(press(keyQ, Modifier::command, "q"), Receiver::tap);
    EXPECT_EQ(press(keySpace, Modifier::command, " "), Receiver::tap);
    EXPECT_EQ(handled, (std::vector<std::string>{"emoji", "suppressed", "suppressed", "suppressed"}));
}

TEST_F(InterceptionTest, TheTapTypesWhateverHasTheKeyboard) {
    activateLocked();
    world.desktop.active = false;
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::tap);
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, ATappedKeyIsHandledOnce) {
    activateLocked();
    press(keyA, 0, "a");
    EXPECT_EQ(handled.size(), 1U) << "the monitor does not see what the tap took";
}

TEST_F(InterceptionTest, AVolumeKeyIsSwallowedByTheTap) {
    activateLocked();
    EXPECT_EQ(send(EventType::systemDefined), Receiver::tap);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, AKeyUpAlwaysPasses) {
    activateLocked();
    EXPECT_EQ(send(EventType::keyUp), Receiver::ownWindow);
    world.desktop.active = false;
    EXPECT_EQ(send(EventType::keyUp), Receiver::otherApplication);
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, LeftAndRightClicksAreNeverIntercepted) {
    activateLocked();
    for (const auto type : {EventType::leftMouseDown, EventType::leftMouseUp, EventType::rightMouseDown,
                            EventType::rightMouseUp, EventType::mouseMoved, EventType::leftMouseDragged}) {
        EXPECT_EQ(send(type), Receiver::ownWindow);
    }
}

TEST_F(InterceptionTest, OtherButtonsWheelsAndGesturesAreSwallowedByTheTap) {
    activateLocked();
    for (const auto type : {EventType::otherMouseDown, EventType::otherMouseUp, EventType::scrollWheel,
                            EventType::gesture, EventType::magnify, EventType::swipe}) {
        EXPECT_EQ(send(type), Receiver::tap) << static_cast<unsigned>(type);
    }
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, ARotationIsSwallowedWhereATapIsHandedOne) {
    BareTaps taps;
    settings.kioskMode.set(true);
    auto manager = std::make_shared<KioskManager>(settings, withServices(world.input, taps));
    manager->activate([](const KeyEvent&) {});
    EXPECT_EQ(taps.callback(InputEvent{.type = EventType::rotate}), Verdict::consume);
    EXPECT_EQ(taps.callback(InputEvent{.type = EventType::leftMouseDown}), Verdict::pass);
    manager.reset();
    EXPECT_EQ(taps.callback(InputEvent{.type = EventType::rotate}), Verdict::pass) << "nobody there to decide";
}

TEST_F(InterceptionTest, ATapsOwnDisablingPassesAndEnablesOnlyATapThatIsThere) {
    BareTaps taps;
    settings.kioskMode.set(true);
    const auto manager = std::make_shared<KioskManager>(settings, withServices(world.input, taps));
    manager->activate([](const KeyEvent&) {});
    for (const auto notification : {EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}) {
        taps.enabled.clear();
        EXPECT_EQ(taps.callback(InputEvent{.type = notification}), Verdict::pass);
        EXPECT_EQ(taps.enabled, std::vector<bool>{true});
    }
    manager->deactivate();
    taps.enabled.clear();
    EXPECT_EQ(taps.callback(InputEvent{.type = EventType::tapDisabledByTimeout}), Verdict::pass);
    EXPECT_TRUE(taps.enabled.empty());
}

TEST_F(InterceptionTest, ATapTakenByTheSystemIsEnabledAgainAtOnce) {
    activateLocked();
    for (const auto notification : {EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}) {
        EXPECT_EQ(effectsOf(world, [&] { world.input.disableTaps(notification); }), Effects{"tap.enable"});
        EXPECT_TRUE(world.input.isTapInForce());
    }
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, WhileTheOverlayShowsTheMonitorLetsEverythingThroughUntouched) {
    activate();
    showOverlay();
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::ownWindow);
    EXPECT_EQ(modifiers(Modifier::shift), Receiver::ownWindow);
    EXPECT_TRUE(handled.empty());
    hideOverlay();
    press(keyA, 0, "a");
    EXPECT_EQ(handled.size(), 1U);
}

TEST_F(InterceptionTest, WhileTheOverlayShowsInLockdownTheMonitorStillLetsThrough) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    activate();
    showOverlay();
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::ownWindow);
    EXPECT_EQ(send(EventType::systemDefined), Receiver::ownWindow);
}

TEST_F(InterceptionTest, WhileTheOverlayShowsTheTapKeepsSwallowingAndDelivering) {
    activateLocked();
    showOverlay();
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::tap);
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, AMonitorThatOutlivesTheActivityLetsEverythingThrough) {
    struct KeptMonitors final : EventMonitors {
        LocalHandler handler;
        [[nodiscard]] MonitorToken addLocalMonitorForEvents(EventMask, LocalHandler given) override {
            handler = std::move(given);
            return MonitorToken{1};
        }
        [[nodiscard]] MonitorToken addGlobalMonitorForEvents(EventMask, GlobalHandler) override {
            return MonitorToken{2};
        }
        void removeMonitor(MonitorToken) override {}
    } monitors;
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    auto manager = std::make_shared<KioskManager>(settings, withServices(monitors, world.input));
    manager->activate([this](const KeyEvent& event) { handled.push_back(describe(event)); });
    const auto key = simulated::keyEvent(keyA, 0, "a");
    EXPECT_EQ(monitors.handler(key), Verdict::consume);
    manager->deactivate();
    EXPECT_EQ(monitors.handler(key), Verdict::pass);
    manager.reset();
    EXPECT_EQ(monitors.handler(key), Verdict::pass);
    world.time.drain();
    EXPECT_TRUE(handled.empty());
}

TEST_F(InterceptionTest, ATapMadeAfterDeactivationWorksThoughTheManagerIsInactive) {
    settings.kioskMode.set(true);
    world.input.setTapsAvailable(false);
    activate();
    kiosk->deactivate();
    world.input.setTapsAvailable(true);
    world.time.advance(2);
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::tap);
    EXPECT_EQ(handled, std::vector<std::string>{"'a'"});
}

TEST_F(InterceptionTest, SecureTypingReachesTheOverlaysFieldInLockdown) {
    activateLocked();
    showOverlay();
    world.input.setSecureInput(true);
    std::string field;
    world.input.setWindowHandler([&](const InputEvent& event) { field += event.text().value_or(""); });
    EXPECT_EQ(press(keyA, 0, "a"), Receiver::ownWindow);
    EXPECT_EQ(field, "a");
    EXPECT_TRUE(handled.empty());
}

} // namespace
} // namespace tapalong
