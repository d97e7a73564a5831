#include "sound/SoundEngine.h"

#include "settings/SettingsFixture.test.h"

#include <memory>

namespace tapalong {
namespace {

struct SoundEngineTest : SettingsFixture {
    [[nodiscard]] std::unique_ptr<SoundEngine> makeEngine() {
        return std::make_unique<SoundEngine>(settings, world.sounds, world.output);
    }
};

TEST_F(SoundEngineTest, TheSelectedPacksSoundIsLoadedWhenTheEngineIsMade) {
    settings.selectedSoundPack.set("frog");
    EXPECT_EQ(effectsOf(world, [this] { EXPECT_EQ(makeEngine()->currentPack().id, "frog"); }),
              Effects{"sound.load Frog"});
}

TEST_F(SoundEngineTest, AStoredDisplayNameOrNothingResolvesToTink) {
    settings.selectedSoundPack.set("Pop");
    EXPECT_EQ(makeEngine()->currentPack().id, "tink");
    settings.selectedSoundPack.set("");
    EXPECT_EQ(makeEngine()->currentPack().id, "tink");
}

TEST_F(SoundEngineTest, EachKeyStopsTheFormerSoundAndPlaysFromTheStart) {
    const auto engine = makeEngine();
    EXPECT_EQ(effectsOf(world,
                        [&] {
                            engine->playKeySound();
                            engine->playKeySound();
                        }),
              (Effects{"sound.stop Tink", "sound.play Tink", "sound.stop Tink", "sound.play Tink"}));
}

TEST_F(SoundEngineTest, WithSoundOffNothingIsStoppedOrPlayed) {
    const auto engine = makeEngine();
    settings.soundEnabled.set(false);
    EXPECT_TRUE(effectsOf(world, [&] { engine->playKeySound(); }).empty());
}

TEST_F(SoundEngineTest, SoundIsSwitchedOffAndOnWhileTheEngineLives) {
    const auto engine = makeEngine();
    settings.soundEnabled.set(false);
    engine->playKeySound();
    settings.soundEnabled.set(true);
    EXPECT_EQ(effectsOf(world, [&] { engine->playKeySound(); }), (Effects{"sound.stop Tink", "sound.play Tink"}));
}

TEST_F(SoundEngineTest, AnotherSelectionDoesNotReachARunningEngine) {
    const auto engine = makeEngine();
    settings.selectedSoundPack.set("pop");
    EXPECT_EQ(effectsOf(world, [&] { engine->playKeySound(); }), (Effects{"sound.stop Tink", "sound.play Tink"}));
}

TEST_F(SoundEngineTest, AMissingSoundGivesOneLineAndSilence) {
    world.sounds.names.erase("Tink");
    std::unique_ptr<SoundEngine> engine;
    EXPECT_EQ(effectsOf(world, [&] { engine = makeEngine(); }),
              (Effects{"sound.load Tink", "print ⚠️ System sound not found: Tink"}));
    EXPECT_TRUE(effectsOf(world, [&] { engine->playKeySound(); }).empty());
}

TEST_F(SoundEngineTest, SwitchingToAnotherPackLoadsItsSound) {
    const auto engine = makeEngine();
    EXPECT_EQ(effectsOf(world, [&] { engine->switchPack("morse"); }), Effects{"sound.load Morse"});
    EXPECT_EQ(engine->currentPack().id, "morse");
    EXPECT_EQ(effectsOf(world, [&] { engine->playKeySound(); }), (Effects{"sound.stop Morse", "sound.play Morse"}));
}

TEST_F(SoundEngineTest, SwitchingToThePackInUseDoesNotReload) {
    const auto engine = makeEngine();
    EXPECT_TRUE(effectsOf(world, [&] { engine->switchPack("tink"); }).empty());
}

TEST_F(SoundEngineTest, SwitchingToAnUnknownPackMeansTink) {
    settings.selectedSoundPack.set("pop");
    const auto engine = makeEngine();
    EXPECT_EQ(effectsOf(world, [&] { engine->switchPack("harp"); }), Effects{"sound.load Tink"});
    EXPECT_EQ(engine->currentPack().id, "tink");
    EXPECT_TRUE(effectsOf(world, [&] { engine->switchPack("harp"); }).empty()) << "tink is current by now";
}

TEST_F(SoundEngineTest, SwitchingToAMissingSoundIsSilentToo) {
    world.sounds.names.erase("Funk");
    const auto engine = makeEngine();
    EXPECT_EQ(effectsOf(world, [&] { engine->switchPack("funk"); }),
              (Effects{"sound.load Funk", "print ⚠️ System sound not found: Funk"}));
    EXPECT_TRUE(effectsOf(world, [&] { engine->playKeySound(); }).empty());
}

} // namespace
} // namespace tapalong
