#pragma once

#include <memory>
#include <string_view>

namespace tapalong {

/// One short clip. Neither call blocks; a sound server that is gone means silence.
class SystemSound {
public:
    virtual ~SystemSound() = default;

    virtual void play() = 0; ///< from the start
    virtual void stop() = 0;
};

class SystemSounds {
public:
    virtual ~SystemSounds() = default;

    /// Null when there is no sound of that name (case-sensitive).
    [[nodiscard]] virtual std::unique_ptr<SystemSound> soundNamed(std::string_view name) = 0;
};

} // namespace tapalong
