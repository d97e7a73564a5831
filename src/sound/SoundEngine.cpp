#include "sound/SoundEngine.h"

#include "platform/StandardOutput.h"
#include "platform/SystemSounds.h"
#include "settings/SessionSettings.h"

#include <string>

namespace tapalong {

SoundEngine::SoundEngine(const SessionSettings& settings, SystemSounds& sounds, StandardOutput& output)
    : m_settings(settings), m_sounds(sounds), m_output(output),
      m_currentPack(&SoundPack::packWithID(settings.selectedSoundPack.get())) {
    loadSound();
}

SoundEngine::~SoundEngine() = default;

void SoundEngine::loadSound() {
    m_sound = m_sounds.soundNamed(m_currentPack->systemSoundName);
    if (!m_sound) {
        m_output.print("⚠️ System sound not found: " + std::string(m_currentPack->systemSoundName));
    }
}

void SoundEngine::playKeySound() {
    if (m_settings.soundEnabled.get() && m_sound) {
        m_sound->stop();
        m_sound->play();
    }
}

void SoundEngine::switchPack(std::string_view id) {
    const auto& pack = SoundPack::packWithID(id);
    if (pack.id != m_currentPack->id) {
        m_currentPack = &pack;
        loadSound();
    }
}

} // namespace tapalong
