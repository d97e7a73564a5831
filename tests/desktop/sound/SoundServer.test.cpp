// The real player on a real sound server, recorded where a loudspeaker would be.

#include "HangGuard.h"
#include "Onsets.h"
#include "PrivateServer.h"
#include "Recorder.h"
#include "clips/WavFile.h"
#include "platform/linux/sound/Clip.h"
#include "platform/linux/sound/PulseSystemSounds.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <span>
#include <string>
#include <thread>

namespace tapalong::test {
namespace {

constexpr std::size_t samplesPerMillisecond = 48; // the clips' and the server's rate

using std::chrono::milliseconds;
using std::chrono::steady_clock;

void pause(milliseconds time) {
    std::this_thread::sleep_for(time);
}

std::vector<float> samplesOf(const char* name) {
    const auto clip = loadClip(PulseSystemSounds::installedFolder(), name);
    return clip == nullptr ? std::vector<float>{} : clip->samples;
}

bool isSilent(std::span<const float> samples) {
    return std::all_of(samples.begin(), samples.end(), [](float sample) { return std::abs(sample) < 1e-4F; });
}

/// Whether one of five trials succeeds: see IsHeardAtTypingSpeed for what may spoil the others.
template <class Trial> bool holdsOnce(Trial trial) {
    for (int attempt = 0; attempt < 5; ++attempt) {
        if (trial()) {
            return true;
        }
    }
    return false;
}

/// No server at first; each test starts it when it wants to.
class SoundServer : public testing::Test {
protected:
    void startServer() {
        m_recorder.reset();
        m_server.emplace(m_home);
        m_recorder.emplace();
    }

    /// Plays until the recorder hears the clip; the hang guard is what ends a vain wait.
    void playUntilHeard(SystemSound& sound, const char* name) {
        const HangGuard guard("waiting for a sound to be heard", std::chrono::seconds(60));
        do {
            m_recorder->clear();
            sound.play();
            pause(milliseconds(700));
        } while (findOnsets(m_recorder->samples(), samplesOf(name), 1'000).empty());
        pause(milliseconds(300));
    }

    void waitForPausedStream() {
        const HangGuard guard("waiting for the idle stream to be paused", std::chrono::seconds(60));
        while (m_recorder->playbackStreams().paused != 1) {
            pause(milliseconds(100));
        }
    }

    PrivateHome m_home;
    std::optional<PrivateServer> m_server;
    std::optional<Recorder> m_recorder;
};

class EveryKey : public SoundServer, public testing::WithParamInterface<const char*> {
protected:
    static constexpr int plays = 20;

    /// How many of the plays were heard; nothing when the recording itself has holes.
    std::optional<int> typeAndListen(SystemSound& sound) {
        m_recorder->clear();
        const auto begin = steady_clock::now();
        for (int i = 0; i < plays; ++i) {
            sound.stop();
            sound.play();
            pause(milliseconds(140 + 17 * (i % 5)));
        }
        pause(milliseconds(500));
        const auto passed = std::chrono::duration<double>(steady_clock::now() - begin).count();
        const auto samples = m_recorder->samples();
        // The recorder gets its samples in pieces of about 10 ms; more than 60 ms too few were lost on the way.
        if (m_recorder->lossy() || static_cast<double>(samples.size()) < (passed - 0.06) * clipRate) {
            return std::nullopt;
        }
        return static_cast<int>(findOnsets(samples, samplesOf(GetParam()), 100 * samplesPerMillisecond).size());
    }
};

TEST_P(EveryKey, IsHeardAtTypingSpeed) {
    startServer();
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed(GetParam());
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, GetParam());
    // A machine under load starves the player or the recorder now and then, which tears a hole into what is heard. A
    // player that loses plays by itself loses them each time, so one recording without a fault is asked for.
    std::string heard;
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto count = typeAndListen(*sound);
        if (count == plays) {
            return;
        }
        heard += count.has_value() ? std::to_string(*count) + " heard; " : "recording with holes; ";
    }
    FAIL() << "of " << plays << " plays, five times: " << heard << '\n' << m_server->log();
}

INSTANTIATE_TEST_SUITE_P(Clips, EveryKey, testing::Values("Tink", "Pop", "Frog", "Funk", "Glass", "Morse"),
                         [](const auto& name) { return std::string(name.param); });

TEST_F(SoundServer, SecondPlayCutsTheFirstAndRunsToItsEnd) {
    startServer();
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Funk");
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, "Funk");
    const auto clip = samplesOf("Funk");
    EXPECT_TRUE(holdsOnce([&] {
        m_recorder->clear();
        sound->play();
        pause(milliseconds(100));
        sound->play();
        pause(milliseconds(900));
        const auto samples = m_recorder->samples();
        const auto onsets = findOnsets(samples, clip, 20 * samplesPerMillisecond);
        if (onsets.size() != 2 || onsets[1] - onsets[0] >= clip.size()) {
            return false;
        }
        const std::size_t end = onsets[1] + clip.size();
        return end + 4'800 <= samples.size() && difference(samples, onsets[1], clip, 200, clip.size()) < 0.01 &&
               isSilent(std::span(samples).subspan(end + 48, 4'752));
    }));
}

TEST_F(SoundServer, TwoSoundsPlayTogether) {
    startServer();
    PulseSystemSounds sounds;
    const auto glass = sounds.soundNamed("Glass");
    const auto morse = sounds.soundNamed("Morse");
    ASSERT_TRUE(glass != nullptr && morse != nullptr);
    playUntilHeard(*glass, "Glass");
    const auto clip = samplesOf("Glass");
    EXPECT_TRUE(holdsOnce([&] {
        m_recorder->clear();
        glass->play();
        pause(milliseconds(100));
        morse->play();
        pause(milliseconds(900));
        auto samples = m_recorder->samples();
        const auto onsets = findOnsets(samples, clip, 100 * samplesPerMillisecond);
        if (onsets.size() != 1 || onsets[0] + clip.size() > samples.size()) {
            return false;
        }
        for (std::size_t i = 0; i < clip.size(); ++i) {
            samples[onsets[0] + i] -= clip[i];
        }
        return findOnsets(samples, samplesOf("Morse"), 100 * samplesPerMillisecond).size() ==
               1; // what remains is the other sound
    }));
}

TEST_F(SoundServer, StoppedSoundFallsSilentLongBeforeItsEnd) {
    startServer();
    // Eight seconds, so that on a loaded machine, too, it does not end by itself within the test.
    const std::vector<std::int16_t> tone(8UL * clipRate, 4'000);
    ASSERT_TRUE(clips::writeWav(m_home.folder() / "Long.wav", tone));
    PulseSystemSounds sounds(m_home.folder());
    const auto sound = sounds.soundNamed("Long");
    ASSERT_NE(sound, nullptr);
    const HangGuard guard("waiting for a stopped sound to fall silent");
    sound->play();
    do {
        m_recorder->clear();
        pause(milliseconds(100));
    } while (isSilent(m_recorder->samples()));
    sound->stop();
    pause(milliseconds(500));
    m_recorder->clear();
    pause(milliseconds(500));
    const auto samples = m_recorder->samples();
    ASSERT_GT(samples.size(), 4'800U);
    EXPECT_TRUE(isSilent(samples));
}

TEST_F(SoundServer, IdleStreamIsPausedAndTheNextKeyIsHeard) {
    startServer();
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Pop");
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, "Pop");
    int clean = 0;
    for (int i = 0; i < 3; ++i) {
        waitForPausedStream();
        m_recorder->clear();
        sound->play();
        pause(milliseconds(800));
        const auto samples = m_recorder->samples();
        EXPECT_FALSE(isSilent(samples)) << "after pause " << i + 1;
        clean += static_cast<int>(findOnsets(samples, samplesOf("Pop"), 1'000).size());
    }
    EXPECT_GE(clean, 1) << "something is heard each time, but never the clip from its start";
}

TEST_F(SoundServer, IsFoundAgainAfterItWasKilled) {
    startServer();
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Tink");
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, "Tink");
    m_server->kill();
    sound->play();
    pause(milliseconds(500));
    startServer();
    playUntilHeard(*sound, "Tink");
}

TEST_F(SoundServer, IsFoundWhenItStartsLate) {
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Tink");
    ASSERT_NE(sound, nullptr);
    sound->play();
    pause(milliseconds(500));
    startServer();
    playUntilHeard(*sound, "Tink");
}

TEST_F(SoundServer, IsNotLookedForAgainWhileNothingIsPlayed) {
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Tink");
    ASSERT_NE(sound, nullptr);
    sound->play();
    pause(milliseconds(500));
    startServer();
    pause(milliseconds(3000));
    const auto streams = m_recorder->playbackStreams();
    EXPECT_EQ(streams.paused + streams.running, 0);
    playUntilHeard(*sound, "Tink");
}

TEST_F(SoundServer, AbsenceGivesOneLineAndNoHang) {
    const HangGuard guard("playing without a sound server");
    setenv("PULSE_SERVER", ("unix:" + (m_home.folder() / "nobody").string()).c_str(), 1);
    testing::internal::CaptureStderr();
    {
        PulseSystemSounds sounds;
        const auto sound = sounds.soundNamed("Glass");
        EXPECT_NE(sound, nullptr);
        // Long enough for the server to be looked for several times.
        for (int i = 0; i < 50 && sound != nullptr; ++i) {
            sound->stop();
            sound->play();
            pause(milliseconds(100));
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Sound is off: no sound server answers.\n");
    unsetenv("PULSE_SERVER");
}

TEST_F(SoundServer, IsNotLookedForBeforeASoundIsAskedFor) {
    testing::internal::CaptureStderr();
    {
        PulseSystemSounds sounds;
        EXPECT_EQ(sounds.soundNamed("Basso"), nullptr);
        pause(milliseconds(300));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(SoundServer, FrozenOneBlocksNeitherPlayingNorTheEnd) {
    startServer();
    std::optional<PulseSystemSounds> sounds(std::in_place);
    auto sound = sounds->soundNamed("Glass");
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, "Glass");
    m_server->freeze();
    {
        const HangGuard guard("playing on a frozen sound server");
        // Far more than fits into the socket's buffer if each play were a message.
        for (int i = 0; i < 20'000; ++i) {
            sound->stop();
            sound->play();
        }
        pause(milliseconds(3'000));
        sound->play();
        sound.reset();
        sounds.reset();
    }
    m_server->thaw();
}

TEST_F(SoundServer, FrozenOneDoesNotBlockTheStart) {
    startServer();
    m_server->freeze();
    {
        const HangGuard guard("starting on a frozen sound server");
        PulseSystemSounds sounds;
        const auto sound = sounds.soundNamed("Glass");
        ASSERT_NE(sound, nullptr);
        for (int i = 0; i < 100; ++i) {
            sound->play();
            pause(milliseconds(5));
        }
    }
    m_server->thaw();
}

TEST_F(SoundServer, ThawedOneIsHeardAgain) {
    startServer();
    PulseSystemSounds sounds;
    const auto sound = sounds.soundNamed("Glass");
    ASSERT_NE(sound, nullptr);
    playUntilHeard(*sound, "Glass");
    m_server->freeze();
    for (int i = 0; i < 20; ++i) {
        sound->play();
        pause(milliseconds(100));
    }
    m_server->thaw();
    playUntilHeard(*sound, "Glass");
}

} // namespace
} // namespace tapalong::test
