#pragma once

#include "platform/linux/x11guard/Keyboards.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tapalong {

/// What a keyboard was like before we touched it.
struct SavedDevice {
    std::uint16_t device = 0;
    LockState locks;
    std::uint32_t enabledControls = 0;
    std::uint32_t focus = 0;
};

/// What a key does, as the server gives and takes it.
using ActionBytes = std::array<std::uint8_t, 8>;

/// All that is needed to put the server back. It lies in a file in memory that the program holds open: should the
/// guard be killed, the next one finds there what the first one saw. So it is written before the server is changed,
/// and an entry counts once it is whole.
class Snapshot {
public:
    /// In the file behind the descriptor, which is made large enough; null when that fails. Lives until the process
    /// ends.
    [[nodiscard]] static Snapshot* inFile(int descriptor);

    [[nodiscard]] SavedDevice* find(std::uint16_t device);
    /// False when there is no room for more.
    [[nodiscard]] bool add(const SavedDevice& device);
    /// The device is gone; its number may be another's soon.
    void forget(std::uint16_t device);

    /// The number under which the action is kept; none when there is no room for more.
    [[nodiscard]] std::optional<std::uint16_t> keep(const ActionBytes& action);
    /// None for a number that no action has.
    [[nodiscard]] std::optional<ActionBytes> action(std::uint16_t number) const;

    /// Tells this snapshot from any other.
    [[nodiscard]] std::uint16_t mark() const { return m_mark; }

private:
    // The server has at most 40 devices at a time.
    static constexpr std::size_t mostDevices = 64;
    // All keys that switch to a certain terminal share one action; a usual keymap has some thirty.
    static constexpr std::size_t mostActions = 2048;

    [[nodiscard]] std::span<SavedDevice> devices() { return {m_devices.data(), m_deviceCount.load()}; }

    std::uint16_t m_mark;
    std::atomic<std::uint16_t> m_deviceCount;
    std::atomic<std::uint16_t> m_actionCount;
    std::array<SavedDevice, mostDevices> m_devices;
    std::array<ActionBytes, mostActions> m_actions;
};

} // namespace tapalong
