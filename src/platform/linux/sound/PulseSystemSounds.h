#pragma once

#include "platform/SystemSounds.h"

#include <filesystem>
#include <memory>

namespace tapalong {

class PulseOutput;

/// The named sounds as clips on the user's sound server. The server is looked for at the first soundNamed() that finds
/// its clip; when none answers, one line on standard error says so and the sounds stay silent until one does.
/// A sound may outlive the object that gave it; destroying a sound stops it.
class PulseSystemSounds : public SystemSounds {
public:
    explicit PulseSystemSounds(std::filesystem::path folder = installedFolder());
    ~PulseSystemSounds() override;

    [[nodiscard]] std::unique_ptr<SystemSound> soundNamed(std::string_view name) override;

    /// ../share/tapalong/sounds, seen from the program's own folder; empty when nobody knows that.
    [[nodiscard]] static std::filesystem::path installedFolder();

private:
    std::filesystem::path m_folder;
    std::shared_ptr<PulseOutput> m_output;
};

} // namespace tapalong
