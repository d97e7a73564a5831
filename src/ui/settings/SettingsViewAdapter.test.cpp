#include "ui/settings/SettingsViewAdapter.h"

#include "ui/Gui.test.h"
#include "views/ControlRange.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace tapalong {

namespace {

struct SettingsWindowTest : testing::Test {
    SettingsWindowTest() {
        gui.open(gui.app.settingsView(), {500, 1100});
        adapter = gui.window->findChild<SettingsViewAdapter*>();
    }
    ~SettingsWindowTest() override { EXPECT_EQ(takeWarnings().join("\n").toStdString(), ""); }

    SessionSettings& settings() { return gui.app.settings(); }
    QQuickItem* item(const char* name) { return itemNamed(*gui.window, name); }
    /// The control of a kind whose text that is; labels have the same text.
    QQuickItem* control(const char* type, const char* text) {
        for (auto* candidate : allItems(*gui.window)) {
            if (candidate->inherits(type) && candidate->isVisible() && candidate->property("text") == text) {
                return candidate;
            }
        }
        return nullptr;
    }
    QQuickItem* toggle(const char* text) { return control("QQuickSwitch", text); }
    QQuickItem* button(const char* text) { return control("QQuickAbstractButton", text); }
    /// The slider that begins there; sliders have no text.
    QQuickItem* sliderFrom(double lower) {
        for (auto* candidate : allItems(*gui.window)) {
            if (candidate->inherits("QQuickSlider") && candidate->property("from").toDouble() == lower) {
                return candidate;
            }
        }
        return nullptr;
    }
    void clickOn(QQuickItem* target) {
        ASSERT_NE(target, nullptr);
        click(*gui.window, target->mapToScene({target->width() / 2, target->height() / 2}));
        turn();
    }

    /// One that closes is none.
    bool hasOpenPopover() {
        const auto objects = gui.window->findChildren<QObject*>();
        return std::any_of(objects.begin(), objects.end(), [](const QObject* object) {
            return object->inherits("QQuickPopup") && object->property("opened").toBool();
        });
    }

    Gui gui;
    SettingsViewAdapter* adapter = nullptr;
};

} // namespace

TEST_F(SettingsWindowTest, SeveralChangesOfOneTurnAreOneSignalAfterThem) {
    turn();
    int changes = 0;
    double seen = 0;
    QObject::connect(adapter, &ViewAdapter::changed, adapter, [&] {
        ++changes;
        seen = adapter->fontSize();
    });
    settings().fontSize.set(80);
    settings().showCursor.set(false);
    settings().fontSize.set(96);
    EXPECT_EQ(changes, 0);
    turn();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(seen, 96);
    turn();
    EXPECT_EQ(changes, 1);
}

TEST_F(SettingsWindowTest, TheStartButtonsCornersAreSmooth) {
    settings().exitPassword.set("open");
    turn();
    const auto* start = button("Start Session");
    ASSERT_NE(start, nullptr);
    const QRect corner(start->mapToScene({0, 0}).toPoint(), QSize(10, 10));
    const QImage shown = gui.window->grabWindow();
    const QColor face = shown.pixelColor(corner.bottomRight());
    const QColor around = shown.pixelColor(corner.topLeft());
    int between = 0;
    for (int y = corner.top(); y <= corner.bottom(); ++y) {
        for (int x = corner.left(); x <= corner.right(); ++x) {
            const int green = shown.pixelColor(x, y).green();
            between += green > face.green() + 20 && green < around.green() - 20 ? 1 : 0;
        }
    }
    EXPECT_GE(between, 8);
}

TEST_F(SettingsWindowTest, ShowingTheWindowWritesNothing) {
    gui.setDark(true);
    turn();
    EXPECT_TRUE(gui.desktop.defaults.stored.empty());
}

TEST_F(SettingsWindowTest, StoredValueOutsideOfASlidersRangeIsLeftAlone) {
    settings().fontSize.set(500);
    settings().hotCornerDwellTime.set(0.25);
    turn();
    EXPECT_EQ(settings().fontSize.get(), 500);
    EXPECT_EQ(settings().hotCornerDwellTime.get(), 0.25);
    EXPECT_NE(item("500 pt"), nullptr);
}

TEST_F(SettingsWindowTest, SlidersStoreTheirOwnStepsWhateverIsAskedFor) {
    auto* dwell = sliderFrom(dwellTimeRange.lower);
    auto* size = sliderFrom(fontSizeRange.lower);
    ASSERT_NE(dwell, nullptr);
    ASSERT_NE(size, nullptr);
    dwell->setProperty("value", 0.7);
    size->setProperty("value", 73.0);
    EXPECT_EQ(settings().hotCornerDwellTime.get(), 0.5);
    EXPECT_EQ(settings().fontSize.get(), 72);
    size->setProperty("value", 90.5);
    EXPECT_EQ(settings().fontSize.get(), 92);
}

TEST_F(SettingsWindowTest, ClickOnASwitchWritesThrough) {
    auto* rainbow = toggle("Rainbow Mode");
    ASSERT_NE(rainbow, nullptr);
    clickOn(rainbow);
    EXPECT_FALSE(settings().rainbowMode.get());
    clickOn(rainbow);
    EXPECT_TRUE(settings().rainbowMode.get());
    settings().rainbowMode.set(false);
    turn();
    EXPECT_FALSE(rainbow->property("checked").toBool());
}

TEST_F(SettingsWindowTest, AssistiveToggleCountsAsAClick) {
    toggle("Show Cursor")->setProperty("checked", false);
    EXPECT_FALSE(settings().showCursor.get());
}

TEST_F(SettingsWindowTest, AssistivePressOfAnyButtonIsAClickWhileItIsEnabled) {
    settings().useSystemAppearance.set(false);
    settings().exitPassword.set("open");
    turn();
    for (const char* name :
         {"About Lockdown Mode", "Play Sound", "Text Color", "+", "\u2303\u2325\u2318T", "Start Session"}) {
        auto* pressed = button(name);
        ASSERT_NE(pressed, nullptr) << name;
        auto* accessible = QAccessible::queryAccessibleInterface(pressed);
        ASSERT_EQ(accessible->role(), QAccessible::Button) << name;
        EXPECT_EQ(accessible->text(QAccessible::Name).toStdString(), name);
        const QSignalSpy clicks(pressed, SIGNAL(clicked()));
        pressed->setEnabled(false);
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(clicks.count(), 0) << name;
        pressed->setEnabled(true);
        accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(clicks.count(), 1) << name;
    }
}

TEST_F(SettingsWindowTest, LockdownCannotBeSwitchedWithoutPermission) {
    gui.desktop.desktop.trusted = false;
    gui.app.settingsView()->checkAccessibilityPermission();
    turn();
    auto* lockdown = toggle("Lockdown Mode");
    EXPECT_FALSE(lockdown->isEnabled());
    clickOn(lockdown);
    lockdown->setProperty("checked", true);
    EXPECT_FALSE(settings().kioskMode.get());
    EXPECT_FALSE(lockdown->property("checked").toBool());
    gui.desktop.desktop.trusted = true;
    gui.app.settingsView()->checkAccessibilityPermission();
    turn();
    clickOn(lockdown);
    EXPECT_TRUE(settings().kioskMode.get());
}

TEST_F(SettingsWindowTest, WarningsComeAndGo) {
    const char* password = "Set an exit password before starting a session";
    const char* permission = "Accessibility permission required for full lockdown";
    EXPECT_NE(item(password), nullptr);
    EXPECT_EQ(item(permission), nullptr);
    settings().exitPassword.set("x");
    settings().kioskMode.set(true);
    gui.desktop.desktop.trusted = false;
    gui.app.settingsView()->checkAccessibilityPermission();
    turn();
    EXPECT_EQ(item(password), nullptr);
    EXPECT_NE(item(permission), nullptr);
    clickOn(button("Grant Accessibility Permission"));
    gui.desktop.desktop.trusted = true;
    gui.desktop.time.advance(1.0);
    turn();
    EXPECT_EQ(item(permission), nullptr);
}

TEST_F(SettingsWindowTest, NoticesOfTheDesktopAreShown) {
    gui.desktop.notices.set({"The disk is full."});
    turn();
    EXPECT_NE(item("The disk is full."), nullptr);
    gui.desktop.notices.set({});
    turn();
    EXPECT_EQ(item("The disk is full."), nullptr);
}

TEST_F(SettingsWindowTest, WhatLockdownModeCannotStopIsListedWhileItIsOn) {
    const char* head = "On this computer Lockdown Mode cannot stop everything:";
    const char* powerButton = "The power button can still switch this computer off.";
    gui.app.settingsView()->checkAccessibilityPermission();
    gui.desktop.inputLimits.set({InputLimit::powerButton});
    turn();
    EXPECT_EQ(item(head), nullptr);
    EXPECT_EQ(item(powerButton), nullptr);
    const auto usualHeight = gui.window->rootObject()->implicitHeight();
    clickOn(toggle("Lockdown Mode"));
    EXPECT_NE(item(head), nullptr);
    EXPECT_NE(item(powerButton), nullptr);
    EXPECT_GT(gui.window->rootObject()->implicitHeight(), usualHeight);
    gui.desktop.inputLimits.set({});
    turn();
    EXPECT_EQ(item(head), nullptr);
    EXPECT_EQ(item(powerButton), nullptr);
    EXPECT_EQ(gui.window->rootObject()->implicitHeight(), usualHeight) << "nothing to say takes no room";
}

TEST_F(SettingsWindowTest, StartNeedsAPassword) {
    auto* start = button("Start Session");
    EXPECT_FALSE(start->isEnabled());
    EXPECT_EQ(start->opacity(), 0.4);
    adapter->startSession();
    EXPECT_FALSE(gui.app.sessionManager().isSessionActive());
    settings().exitPassword.set("x");
    turn();
    EXPECT_EQ(start->opacity(), 1.0);
    clickOn(start);
    EXPECT_TRUE(gui.app.sessionManager().isSessionActive());
}

TEST_F(SettingsWindowTest, RowsThatDependOnASwitch) {
    EXPECT_NE(item("Sound"), nullptr);
    EXPECT_NE(button("Play Sound"), nullptr);
    EXPECT_EQ(item("Text Color"), nullptr);
    settings().soundEnabled.set(false);
    settings().useSystemAppearance.set(false);
    turn();
    EXPECT_EQ(item("Sound"), nullptr);
    EXPECT_EQ(button("Play Sound"), nullptr);
    EXPECT_NE(item("Text Color"), nullptr);
    EXPECT_NE(item("Background Color"), nullptr);
}

TEST_F(SettingsWindowTest, PickersStoreTheirChoices) {
    adapter->setSoundPackIndex(2);
    adapter->setExitCornerIndex(3);
    turn();
    EXPECT_EQ(settings().selectedSoundPack.get(), "frog");
    EXPECT_EQ(settings().exitCorner.get(), ScreenCorner::bottomRight);
    EXPECT_EQ(adapter->soundPackIndex(), 2);
    EXPECT_NE(item("Move mouse to Bottom Right corner to exit"), nullptr);
    EXPECT_EQ(adapter->exitCornerLabels(), QStringList({"Top Left", "Top Right", "Bottom Left", "Bottom Right"}));
}

TEST_F(SettingsWindowTest, StepperStopsAtItsEnds) {
    settings().maxCharacters.set(49000);
    turn();
    clickOn(button("+"));
    clickOn(button("+"));
    EXPECT_EQ(settings().maxCharacters.get(), 50000);
    EXPECT_NE(item("Max Characters: 50000"), nullptr);
    clickOn(button("\u2212"));
    EXPECT_EQ(settings().maxCharacters.get(), 49000);
}

TEST_F(SettingsWindowTest, StepperShowsEveryStoredNumberToTheLastDigit) {
    settings().maxCharacters.set(9007199254740993); // one more than a number of QML can tell
    turn();
    EXPECT_NE(item("Max Characters: 9007199254740993"), nullptr);
    settings().maxCharacters.set(-1);
    turn();
    EXPECT_NE(item("Max Characters: -1"), nullptr);
}

TEST_F(SettingsWindowTest, CommandReturnStartsOnceThereIsAPassword) {
    press(*gui.window, Qt::Key_Return, "\r", Qt::MetaModifier);
    EXPECT_FALSE(gui.app.sessionManager().isSessionActive());
    settings().exitPassword.set("x");
    turn();
    press(*gui.window, Qt::Key_Return, "\r");
    EXPECT_FALSE(gui.app.sessionManager().isSessionActive());
    press(*gui.window, Qt::Key_Return, "\r", Qt::MetaModifier);
    EXPECT_TRUE(gui.app.sessionManager().isSessionActive());
}

TEST_F(SettingsWindowTest, BadgeShowsRecording) {
    clickOn(button("\u2303\u2325\u2318T"));
    EXPECT_NE(button("Press shortcut..."), nullptr);
    clickOn(button("Press shortcut..."));
    EXPECT_NE(button("\u2303\u2325\u2318T"), nullptr);
}

TEST_F(SettingsWindowTest, InformationPopoverOpensAndEscapeClosesIt) {
    auto& shown = gui.app.settingsView()->showEmojiInfo;
    clickOn(button("About Modifier Keys Type Emoji"));
    EXPECT_TRUE(shown.get());
    press(*gui.window, Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return !shown.get(); }));
}

TEST_F(SettingsWindowTest, InformationPopoverIsClosedByAClickOnItsButtonHoweverSlow) {
    auto& shown = gui.app.settingsView()->showEmojiInfo;
    auto* about = button("About Modifier Keys Type Emoji");
    clickOn(about);
    ASSERT_TRUE(waitUntil([&] { return hasOpenPopover(); }));
    const QPoint middle = about->mapToScene({about->width() / 2, about->height() / 2}).toPoint();
    QTest::mousePress(gui.window.get(), Qt::LeftButton, {}, middle);
    waitUntil([&] { return hasOpenPopover() || !shown.get(); });
    QTest::mouseRelease(gui.window.get(), Qt::LeftButton, {}, middle);
    EXPECT_TRUE(waitUntil([&] { return !shown.get() && !hasOpenPopover(); }));
}

TEST_F(SettingsWindowTest, ColorWellOpensAChooserThatStoresWhatIsPickedAndASecondClickClosesIt) {
    settings().useSystemAppearance.set(false);
    turn();
    EXPECT_EQ(button("#8CDB21"), nullptr);
    clickOn(button("Text Color"));
    ASSERT_TRUE(waitUntil([&] { return button("#8CDB21") != nullptr; }));
    clickOn(button("#8CDB21"));
    EXPECT_EQ(gui.app.settingsView()->customFG().hexString(), "#8CDB21");
    clickOn(button("Text Color"));
    EXPECT_TRUE(waitUntil([&] { return button("#8CDB21") == nullptr; }));
}

TEST_F(SettingsWindowTest, EveryControlIsReachedByTab) {
    settings().exitPassword.set("x");
    settings().useSystemAppearance.set(false);
    gui.app.settingsView()->checkAccessibilityPermission();
    turn();
    QSet<QQuickItem*> reached;
    for (int i = 0; i < 40; ++i) {
        press(*gui.window, Qt::Key_Tab, "\t");
        reached.insert(gui.window->activeFocusItem());
    }
    // 7 switches, 2 information buttons, 2 pickers, the preview, the field, 2 sliders, 2 colours, the stepper, the
    // badge, the start.
    EXPECT_EQ(reached.size(), 20);
}

} // namespace tapalong
