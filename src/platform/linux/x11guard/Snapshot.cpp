#include "platform/linux/x11guard/Snapshot.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <random>

namespace tapalong {

Snapshot* Snapshot::inFile(int descriptor) {
    // A new file reads as zeros, which is the snapshot of nothing.
    if (ftruncate(descriptor, sizeof(Snapshot)) != 0) {
        return nullptr;
    }
    void* memory = mmap(nullptr, sizeof(Snapshot), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) {
        return nullptr;
    }
    auto* const snapshot = static_cast<Snapshot*>(memory);
    if (snapshot->m_mark == 0) {
        snapshot->m_mark = static_cast<std::uint16_t>(std::random_device{}() | 1U);
    }
    return snapshot;
}

SavedDevice* Snapshot::find(std::uint16_t device) {
    const auto all = devices();
    const auto found =
        std::find_if(all.begin(), all.end(), [device](const auto& each) { return each.device == device; });
    return found != all.end() ? &*found : nullptr;
}

bool Snapshot::add(const SavedDevice& device) {
    // No device has the number zero: what was forgotten makes room.
    if (auto* const unused = find(0)) {
        *unused = device;
        return true;
    }
    const std::uint16_t count = m_deviceCount.load();
    if (count == m_devices.size()) {
        return false;
    }
    m_devices.at(count) = device;
    m_deviceCount.store(static_cast<std::uint16_t>(count + 1));
    return true;
}

void Snapshot::forget(std::uint16_t device) {
    if (auto* const found = find(device)) {
        found->device = 0;
    }
}

std::optional<std::uint16_t> Snapshot::keep(const ActionBytes& action) {
    const std::uint16_t count = m_actionCount.load();
    const auto known = std::span(m_actions).first(count);
    const auto found = std::find(known.begin(), known.end(), action);
    if (found != known.end()) {
        return static_cast<std::uint16_t>(found - known.begin());
    }
    if (count == m_actions.size()) {
        return std::nullopt;
    }
    m_actions.at(count) = action;
    m_actionCount.store(static_cast<std::uint16_t>(count + 1));
    return count;
}

std::optional<ActionBytes> Snapshot::action(std::uint16_t number) const {
    return number < m_actionCount.load() ? std::optional(m_actions.at(number)) : std::nullopt;
}

} // namespace tapalong
