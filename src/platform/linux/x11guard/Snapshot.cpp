#include "platform/linux/x11guard/Snapshot.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <type_traits>

namespace tapalong {

static_assert(std::is_trivially_copyable_v<Snapshot>);

Snapshot Snapshot::ofNothing() {
    Snapshot snapshot;
    snapshot.m_mark = static_cast<std::uint16_t>(std::random_device{}() | 1U);
    return snapshot;
}

std::optional<Snapshot> Snapshot::from(std::span<const std::byte> bytes) {
    Snapshot snapshot;
    if (bytes.size() > sizeof snapshot || bytes.size() < snapshot.sizeInUse()) {
        return std::nullopt;
    }
    std::memcpy(&snapshot, bytes.data(), bytes.size());
    const bool isWhole = snapshot.m_layout == currentLayout && snapshot.m_deviceCount <= mostDevices &&
                         snapshot.m_buttonCount <= mostButtons && snapshot.m_actionCount <= mostActions &&
                         snapshot.sizeInUse() == bytes.size();
    return isWhole ? std::optional(snapshot) : std::nullopt;
}

std::span<const std::byte> Snapshot::bytes() const {
    return std::as_bytes(std::span(this, 1)).first(sizeInUse());
}

std::size_t Snapshot::sizeInUse() const {
    return sizeof(Snapshot) - (mostActions - m_actionCount) * sizeof(ActionBytes);
}

SavedKeyboard* Snapshot::find(std::uint16_t device) {
    const auto all = devices();
    const auto found =
        std::find_if(all.begin(), all.end(), [device](const auto& each) { return each.device == device; });
    return found != all.end() ? &*found : nullptr;
}

bool Snapshot::add(const SavedKeyboard& device) {
    // No device has the number zero: what was forgotten makes room.
    if (auto* const unused = find(0)) {
        *unused = device;
        return true;
    }
    if (m_deviceCount == m_devices.size()) {
        return false;
    }
    m_devices.at(m_deviceCount++) = device;
    return true;
}

void Snapshot::forget(std::uint16_t device) {
    if (auto* const found = find(device)) {
        found->device = 0;
    }
    const auto kept = std::span(m_buttons).first(m_buttonCount);
    const auto end =
        std::remove_if(kept.begin(), kept.end(), [device](const auto& each) { return each.device == device; });
    m_buttonCount = static_cast<std::uint16_t>(end - kept.begin());
}

bool Snapshot::keep(const SavedButton& button) {
    const auto end = m_buttons.begin() + m_buttonCount;
    const auto found = std::find_if(m_buttons.begin(), end, [&button](const auto& each) {
        return each.device == button.device && each.button == button.button;
    });
    if (found == m_buttons.end()) {
        return false;
    }
    *found = button;
    m_buttonCount = static_cast<std::uint16_t>(m_buttonCount + (found == end ? 1 : 0));
    return true;
}

std::optional<std::uint8_t> Snapshot::meaning(std::uint16_t device, std::uint8_t button) const {
    const auto kept = std::span(m_buttons).first(m_buttonCount);
    const auto found = std::find_if(kept.begin(), kept.end(), [device, button](const auto& each) {
        return each.device == device && each.button == button;
    });
    return found != kept.end() ? std::optional(found->meaning) : std::nullopt;
}

std::optional<std::uint16_t> Snapshot::keep(const ActionBytes& action) {
    const auto known = std::span(m_actions).first(m_actionCount);
    const auto found = std::find(known.begin(), known.end(), action);
    if (found != known.end()) {
        return static_cast<std::uint16_t>(found - known.begin());
    }
    if (m_actionCount == m_actions.size()) {
        return std::nullopt;
    }
    m_actions.at(m_actionCount) = action;
    return m_actionCount++;
}

std::optional<ActionBytes> Snapshot::action(std::uint16_t number) const {
    return number < m_actionCount ? std::optional(m_actions.at(number)) : std::nullopt;
}

} // namespace tapalong
