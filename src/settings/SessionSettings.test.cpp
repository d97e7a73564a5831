#include "settings/SessionSettings.h"

#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

struct SessionSettingsTest : SettingsFixture {
    void useColors(const std::string& foreground, const std::string& background) {
        settings.useSystemAppearance.set(false);
        settings.customFGColorHex.set(foreground);
        settings.customBGColorHex.set(background);
    }
};

TEST_F(SessionSettingsTest, AFreshDomainYieldsTheDefaults) {
    EXPECT_EQ(settings.fontSize.get(), 72.0);
    EXPECT_TRUE(settings.useSystemAppearance.get());
    EXPECT_FALSE(settings.darkMode.get());
    EXPECT_TRUE(settings.rainbowMode.get());
    EXPECT_EQ(settings.customFGColorHex.get(), "#FFFFFF");
    EXPECT_EQ(settings.customBGColorHex.get(), "#1A1A2E");
    EXPECT_TRUE(settings.soundEnabled.get());
    EXPECT_EQ(settings.selectedSoundPack.get(), "tink");
    EXPECT_EQ(settings.exitCorner.get(), ScreenCorner::topRight);
    EXPECT_EQ(settings.exitPassword.get(), "");
    EXPECT_TRUE(settings.useTouchID.get());
    EXPECT_EQ(settings.hotCornerDwellTime.get(), 1.5);
    EXPECT_EQ(settings.globalShortcutKeyCode.get(), 17);
    EXPECT_EQ(settings.globalShortcutModifiers.get(), 1835008);
    EXPECT_FALSE(settings.kioskMode.get());
    EXPECT_EQ(settings.maxCharacters.get(), 5000);
    EXPECT_TRUE(settings.showCursor.get());
    EXPECT_TRUE(settings.modifierKeysTypeEmoji.get());
}

TEST_F(SessionSettingsTest, MakingAndReadingTheStoreWritesNothing) {
    std::ignore = settings.fontSize.get();
    std::ignore = settings.backgroundColor();
    EXPECT_TRUE(world.defaults.stored.empty());
    EXPECT_TRUE(world.effects.all().empty());
}

TEST_F(SessionSettingsTest, EachPreferenceIsKeptUnderItsOwnName) {
    const auto effects = effectsOf(world, [this] {
        settings.fontSize.set(1);
        settings.useSystemAppearance.set(false);
        settings.darkMode.set(true);
        settings.rainbowMode.set(false);
        settings.customFGColorHex.set("x");
        settings.customBGColorHex.set("x");
        settings.soundEnabled.set(false);
        settings.selectedSoundPack.set("pop");
        settings.exitCorner.set(ScreenCorner::topLeft);
        settings.exitPassword.set("x");
        settings.useTouchID.set(false);
        settings.hotCornerDwellTime.set(1);
        settings.globalShortcutKeyCode.set(1);
        settings.globalShortcutModifiers.set(1);
        settings.kioskMode.set(true);
        settings.maxCharacters.set(1);
        settings.showCursor.set(false);
        settings.modifierKeysTypeEmoji.set(false);
    });
    EXPECT_EQ(
        effects,
        (Effects{"defaults.set fontSize", "defaults.set useSystemAppearance", "defaults.set darkMode",
                 "defaults.set rainbowMode", "defaults.set customFGColorHex", "defaults.set customBGColorHex",
                 "defaults.set soundEnabled", "defaults.set selectedSoundPack", "defaults.set exitCorner",
                 "defaults.set exitPassword", "defaults.set useTouchID", "defaults.set hotCornerDwellTime",
                 "defaults.set globalShortcutKeyCode", "defaults.set globalShortcutModifiers", "defaults.set kioskMode",
                 "defaults.set maxCharacters", "defaults.set showCursor", "defaults.set modifierKeysTypeEmoji"}));
    EXPECT_EQ(world.defaults.stored.size(), 18U);
}

TEST_F(SessionSettingsTest, ValuesSurviveARestart) {
    settings.exitPassword.set("open sesame");
    settings.exitCorner.set(ScreenCorner::bottomRight);
    settings.maxCharacters.set(2000);
    const SessionSettings restarted(world.defaults, &world.desktop);
    EXPECT_EQ(restarted.exitPassword.get(), "open sesame");
    EXPECT_EQ(restarted.exitCorner.get(), ScreenCorner::bottomRight);
    EXPECT_EQ(restarted.maxCharacters.get(), 2000);
    EXPECT_EQ(restarted.fontSize.get(), 72.0);
}

TEST_F(SessionSettingsTest, NothingIsClampedOnWrite) {
    settings.fontSize.set(-4000);
    settings.hotCornerDwellTime.set(0.25);
    settings.maxCharacters.set(-1);
    settings.globalShortcutKeyCode.set(70000);
    settings.customFGColorHex.set("no colour");
    EXPECT_EQ(settings.fontSize.get(), -4000);
    EXPECT_EQ(settings.hotCornerDwellTime.get(), 0.25);
    EXPECT_EQ(settings.maxCharacters.get(), -1);
    EXPECT_EQ(settings.globalShortcutKeyCode.get(), 70000);
    EXPECT_EQ(settings.customFGColorHex.get(), "no colour");
}

TEST_F(SessionSettingsTest, AnyStoredTextThatIsNoCornerReadsAsTopRight) {
    world.defaults.stored["exitCorner"] = std::string("TopLeft");
    EXPECT_EQ(settings.exitCorner.get(), ScreenCorner::topRight);
}

TEST_F(SessionSettingsTest, ObserversOfTheStoreAreToldBeforeAnyPreferenceChanges) {
    bool before = false;
    const auto subscription = settings.objectWillChange([&] { before = !settings.kioskMode.get(); });
    settings.kioskMode.set(true);
    EXPECT_TRUE(before);
}

TEST_F(SessionSettingsTest, TheSystemsTextColourIsUsedWhileItsAppearanceIsFollowed) {
    settings.customFGColorHex.set("#FF8000");
    EXPECT_EQ(settings.foregroundColor(), Color(NamedColor::primary)) << "named: it resolves when it is drawn";
}

TEST_F(SessionSettingsTest, CustomColoursAreUsedOtherwise) {
    useColors("#FF8000", "#102030");
    EXPECT_EQ(settings.foregroundColor(), Color::fromHex("FF8000"));
    EXPECT_EQ(settings.backgroundColor(), Color::fromHex("102030"));
}

TEST_F(SessionSettingsTest, AnUnreadableBackgroundIsBlackAndTheTextStillFollowsItsOwn) {
    useColors("#FF8000", "navy");
    EXPECT_EQ(settings.backgroundColor(), Color(NamedColor::black));
    EXPECT_EQ(settings.foregroundColor(), Color::fromHex("FF8000"));
}

TEST_F(SessionSettingsTest, AnUnreadableTextColourIsWhite) {
    useColors("orange", "#102030");
    EXPECT_EQ(settings.foregroundColor(), Color(NamedColor::white));
    EXPECT_EQ(settings.backgroundColor(), Color::fromHex("102030"));
}

TEST_F(SessionSettingsTest, ADarkDesktopGivesADeepBlueBlack) {
    world.desktop.appearance = Appearance::darkAqua;
    EXPECT_EQ(settings.backgroundColor(), Color(SrgbColor{0.07, 0.07, 0.1, 1}));
    EXPECT_FALSE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, AnyOtherDesktopGivesItsWindowBackground) {
    world.desktop.appearance = Appearance::aqua;
    EXPECT_EQ(settings.backgroundColor(), Color(NamedColor::windowBackground));
    world.desktop.appearance.reset();
    EXPECT_EQ(settings.backgroundColor(), Color(NamedColor::windowBackground));
}

TEST_F(SessionSettingsTest, ChangingDarkModeAloneChangesNeitherColour) {
    for (const bool system : {true, false}) {
        settings.useSystemAppearance.set(system);
        settings.darkMode.set(false);
        const auto foreground = settings.foregroundColor();
        const auto background = settings.backgroundColor();
        settings.darkMode.set(true);
        EXPECT_EQ(settings.foregroundColor(), foreground);
        EXPECT_EQ(settings.backgroundColor(), background);
    }
}

TEST_F(SessionSettingsTest, AWhiteBackgroundIsLight) {
    useColors("#000000", "#FFFFFF");
    EXPECT_TRUE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, ABackgroundJustBelowMidGreyIsDark) {
    useColors("#000000", "#7F7F7F");
    EXPECT_FALSE(settings.backgroundIsLight());
    useColors("#000000", "#808080");
    EXPECT_TRUE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, AGreenBackgroundIsLightAndABlueOneDark) {
    useColors("#000000", "#00FF00");
    EXPECT_TRUE(settings.backgroundIsLight());
    useColors("#000000", "#0000FF");
    EXPECT_FALSE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, AnUnreadableBackgroundCountsAsDark) {
    useColors("#000000", "navy");
    EXPECT_FALSE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, WithoutComponentsTheDesktopsAppearanceDecides) {
    world.desktop.appearance = Appearance::aqua;
    EXPECT_TRUE(settings.backgroundIsLight());
}

TEST_F(SessionSettingsTest, TheSharedStoreIsTheOneThatLives) {
    EXPECT_EQ(&SessionSettings::shared(), &settings);
}

using SessionSettingsDeathTest = SessionSettingsTest;

TEST_F(SessionSettingsDeathTest, ADesktopWithNoAppearanceAtAllStopsTheProgram) {
    world.desktop.appearance.reset();
    EXPECT_DEATH(std::ignore = settings.backgroundIsLight(), "must have a light or a dark appearance");
}

TEST_F(SessionSettingsDeathTest, AMissingApplicationStopsWhoAsksForItsAppearance) {
    SessionSettings early(world.defaults, nullptr);
    EXPECT_DEATH(std::ignore = early.backgroundColor(), "the application object must exist");
    early.useSystemAppearance.set(false);
    EXPECT_EQ(early.backgroundColor(), Color::fromHex("1A1A2E")) << "custom colours need no application";
}

TEST(SharedSettingsDeathTest, WithoutAStoreTheDoorStopsTheProgram) {
    EXPECT_DEATH(std::ignore = SessionSettings::shared(), "the settings store must exist");
}

TEST(SharedSettings, TheDoorClosesWithItsStoreAndNotWithAnEarlierOne) {
    simulated::SimulatedPlatform world;
    auto first = std::make_unique<SessionSettings>(world.defaults, nullptr);
    const auto second = std::make_unique<SessionSettings>(world.defaults, nullptr);
    first.reset();
    EXPECT_EQ(&SessionSettings::shared(), second.get());
}

} // namespace
} // namespace tapalong
