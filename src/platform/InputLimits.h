#pragma once

#include "base/Observable.h"

#include <cstdint>
#include <vector>

namespace tapalong {

/// What hands at this computer can do below anything that a program may keep from them.
enum class InputLimit : std::uint8_t {
    powerButton,       ///< switches the computer off
    sleepKey,          ///< puts it to sleep
    sysRqEndsPrograms, ///< chords with the SysRq key that end what runs on the screen
    sysRqRestarts,     ///< such chords that restart the computer
    sysRqStopsSaving,  ///< such chords that make every disk read-only until it is restarted
    serverKeys,        ///< what the display server itself does on keys, and bindings that no tap stops
    touchpadGestures,  ///< of the desktop
};

/// Which of these are open on this computer and desktop: found out, never guessed. Announces its changes.
class InputLimits : public ObservableObject {
public:
    virtual ~InputLimits() = default;

    /// What is known to be open, in the order above.
    [[nodiscard]] virtual std::vector<InputLimit> openLimits() const = 0;

    /// Looks anew. What takes longer to find out comes as a change.
    virtual void lookAgain() = 0;
};

} // namespace tapalong
