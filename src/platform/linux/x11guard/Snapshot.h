#pragma once

#include "platform/linux/x11guard/Keyboards.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tapalong {

/// What a keyboard was like before we touched it.
struct SavedKeyboard {
    std::uint16_t device = 0;
    LockState locks;
    std::uint32_t enabledControls = 0;
    std::uint32_t focus = 0;
};

/// What a button stood for before we took its meaning from it.
struct SavedButton {
    std::uint16_t device = 0;
    std::uint8_t button = 0; ///< counted from one
    std::uint8_t meaning = 0;
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

    [[nodiscard]] SavedKeyboard* find(std::uint16_t device);
    /// False when there is no room for more.
    [[nodiscard]] bool add(const SavedKeyboard& device);
    /// The device is gone; its number may be another's soon.
    void forget(std::uint16_t device);
    void forgetKeyboards() { m_deviceCount = 0; }

    /// The number under which the action is kept; none when there is no room for more.
    [[nodiscard]] std::optional<std::uint16_t> keep(const ActionBytes& action);
    /// None for a number that no action has.
    [[nodiscard]] std::optional<ActionBytes> action(std::uint16_t number) const;

    /// In place of what was kept of the same button. False when there is no room for more.
    [[nodiscard]] bool keep(const SavedButton& button);
    /// None for a button of which nothing is kept.
    [[nodiscard]] std::optional<std::uint8_t> meaning(std::uint16_t device, std::uint8_t button) const;

    /// Tells this snapshot from any other.
    [[nodiscard]] std::uint16_t mark() const { return m_mark; }

private:
    // The server has at most 40 devices at a time.
    static constexpr std::size_t mostDevices = 64;
    // A mouse has about ten, and no device more than 255.
    static constexpr std::size_t mostButtons = 1024;
    // All keys that switch to a certain terminal share one action; a usual keymap has some thirty.
    static constexpr std::size_t mostActions = 2048;

    [[nodiscard]] std::size_t sizeInUse() const;
    [[nodiscard]] std::span<SavedKeyboard> devices() { return {m_devices.data(), m_deviceCount}; }

    // To be counted on whenever a member here, or of what is kept, changes.
    static constexpr std::uint16_t currentLayout = 2;

    std::uint16_t m_layout = currentLayout; ///< first, so that every version can read it
    std::uint16_t m_mark = 0;
    std::uint16_t m_deviceCount = 0;
    std::uint16_t m_buttonCount = 0;
    std::uint16_t m_actionCount = 0;
    std::array<SavedKeyboard, mostDevices> m_devices{};
    std::array<SavedButton, mostButtons> m_buttons{};
    std::array<ActionBytes, mostActions> m_actions{}; ///< last: only those in use are written
};

} // namespace tapalong
