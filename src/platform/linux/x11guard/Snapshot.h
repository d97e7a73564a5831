#pragma once

#include "platform/linux/x11guard/Keyboards.h"

#include <array>
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

/// All that is needed to put the server back, as plain bytes: should the guard be killed, the next one goes on from
/// what the first one saw.
class Snapshot {
public:
    [[nodiscard]] static Snapshot ofNothing();

    /// None when the bytes are no snapshot, or that of another version of the program.
    [[nodiscard]] static std::optional<Snapshot> from(std::span<const std::byte> bytes);
    [[nodiscard]] std::span<const std::byte> bytes() const;

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

    [[nodiscard]] std::size_t sizeInUse() const;
    [[nodiscard]] std::span<SavedDevice> devices() { return {m_devices.data(), m_deviceCount}; }

    std::uint16_t m_mark = 0;
    std::uint16_t m_deviceCount = 0;
    std::uint16_t m_actionCount = 0;
    std::array<SavedDevice, mostDevices> m_devices{};
    std::array<ActionBytes, mostActions> m_actions{}; ///< last: only those in use are written
};

} // namespace tapalong
