#pragma once

#include "sound/SoundPack.h"

#include <memory>
#include <string_view>

namespace tapalong {

class SessionSettings;
class StandardOutput;
class SystemSound;
class SystemSounds;

/// Plays the key sound of one session. The pack is the one selected when the engine is made; whether sound is on is
/// asked at each key.
class SoundEngine {
public:
    /// Loads the sound; a missing one is a line of diagnostics and silence.
    SoundEngine(const SessionSettings& settings, SystemSounds& sounds, StandardOutput& output);
    SoundEngine(const SoundEngine&) = delete;
    SoundEngine& operator=(const SoundEngine&) = delete;
    ~SoundEngine();

    /// Cuts the former key's sound off.
    void playKeySound();
    /// Loads another pack, unless it is the one in use. An unknown id means `tink`.
    void switchPack(std::string_view id);

    [[nodiscard]] const SoundPack& currentPack() const { return *m_currentPack; }

private:
    void loadSound();

    const SessionSettings& m_settings;
    SystemSounds& m_sounds;
    StandardOutput& m_output;
    const SoundPack* m_currentPack;
    std::unique_ptr<SystemSound> m_sound;
};

} // namespace tapalong
