#include "platform/linux/sound/PulseSystemSounds.h"

#include "platform/linux/ProgramFolder.h"
#include "platform/linux/sound/PulseOutput.h"

#include <utility>

namespace tapalong {

namespace {

class PulseSound : public SystemSound {
public:
    PulseSound(std::shared_ptr<PulseOutput> output, std::shared_ptr<const Clip> clip)
        : m_output(std::move(output)), m_clip(std::move(clip)), m_id(m_output->newSound()) {}
    ~PulseSound() override { m_output->stop(m_id); }
    PulseSound(const PulseSound&) = delete;
    PulseSound& operator=(const PulseSound&) = delete;

    void play() override { m_output->play(m_id, m_clip); }
    void stop() override { m_output->stop(m_id); }

private:
    std::shared_ptr<PulseOutput> m_output;
    std::shared_ptr<const Clip> m_clip;
    SoundId m_id;
};

} // namespace

PulseSystemSounds::PulseSystemSounds(std::filesystem::path folder) : m_folder(std::move(folder)) {}

PulseSystemSounds::~PulseSystemSounds() = default;

std::unique_ptr<SystemSound> PulseSystemSounds::soundNamed(std::string_view name) {
    auto clip = loadClip(m_folder, name);
    if (clip == nullptr) {
        return nullptr;
    }
    if (m_output == nullptr) {
        m_output = std::make_shared<PulseOutput>();
    }
    return std::make_unique<PulseSound>(m_output, std::move(clip));
}

std::filesystem::path PulseSystemSounds::installedFolder() {
    const auto folder = programFolder();
    return folder.empty() ? folder : folder / ".." / "share" / "tapalong" / "sounds";
}

} // namespace tapalong
