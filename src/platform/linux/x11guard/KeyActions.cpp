#include "platform/linux/x11guard/KeyActions.h"

#include "platform/linux/x11/XcbHeaders.h"

#include <algorithm>
#include <bit>
#include <vector>

namespace tapalong {

namespace {

/// The actions of all keys of a device.
struct ActionMap {
    xcb_keycode_t minKeycode = 0;
    xcb_keycode_t maxKeycode = 0;
    xcb_keycode_t firstKey = 0;
    std::vector<std::uint8_t> counts; ///< per key
    std::vector<xcb_xkb_action_t> actions;
};

ActionMap readActions(xcb_connection_t* xcb, std::uint16_t device) {
    constexpr std::uint16_t part = XCB_XKB_MAP_PART_KEY_ACTIONS;
    const auto request = xcb_xkb_get_map(xcb, device, part, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto reply = own(xcb_xkb_get_map_reply(xcb, request, nullptr));
    if (!reply || reply->nKeyActions == 0) {
        return {};
    }
    xcb_xkb_get_map_map_t map{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply.get()), 0, 0, reply->nKeyActions, reply->totalActions, 0, 0, 0,
                               0, 0, part, &map);
    const std::span counts(map.acts_rtrn_count, reply->nKeyActions);
    const std::span actions(map.acts_rtrn_acts, reply->totalActions);
    return {.minKeycode = reply->minKeyCode,
            .maxKeycode = reply->maxKeyCode,
            .firstKey = reply->firstKeyAction,
            .counts = {counts.begin(), counts.end()},
            .actions = {actions.begin(), actions.end()}};
}

bool writeActions(xcb_connection_t* xcb, std::uint16_t device, ActionMap& map) {
    xcb_xkb_set_map_values_t values{};
    values.actionsCount = map.counts.data();
    values.actions = map.actions.data();
    const auto request = xcb_xkb_set_map_aux_checked(
        xcb, device, XCB_XKB_MAP_PART_KEY_ACTIONS, 0, map.minKeycode, map.maxKeycode, 0, 0, 0, 0, 0, map.firstKey,
        static_cast<std::uint8_t>(map.counts.size()), static_cast<std::uint16_t>(map.actions.size()), 0, 0, 0, 0, 0, 0,
        0, 0, 0, 0, 0, 0, 0, &values);
    return own(xcb_request_check(xcb, request)) == nullptr;
}

/// A second keypad under the first is typing; all other controls change how the keyboard works.
bool switchesOnlyOverlays(const xcb_xkb_sa_set_controls_t& action) {
    constexpr unsigned overlays = XCB_XKB_BOOL_CTRL_OVERLAY_1_MASK | XCB_XKB_BOOL_CTRL_OVERLAY_2_MASK;
    const unsigned controls = unsigned{action.boolCtrlsHigh} << 8U | action.boolCtrlsLow;
    return (controls & ~overlays) == 0;
}

/// What is not known to be harmless is not. Moving and clicking by keys stays: it is without effect unless a grown-up
/// has switched it on, who may then have no other pointer, and it comes to us as any pointer's does.
bool isHarmless(const xcb_xkb_action_t& action) {
    switch (action.type) {
    case XCB_XKB_SA_TYPE_NO_ACTION:
    case XCB_XKB_SA_TYPE_SET_MODS:
    case XCB_XKB_SA_TYPE_LATCH_MODS:
    case XCB_XKB_SA_TYPE_LOCK_MODS:
    case XCB_XKB_SA_TYPE_SET_GROUP:
    case XCB_XKB_SA_TYPE_LATCH_GROUP:
    case XCB_XKB_SA_TYPE_LOCK_GROUP:
    case XCB_XKB_SA_TYPE_ISO_LOCK:
    case XCB_XKB_SA_TYPE_REDIRECT_KEY:
    case XCB_XKB_SA_TYPE_MOVE_PTR:
    case XCB_XKB_SA_TYPE_PTR_BTN:
        return true;
    case XCB_XKB_SA_TYPE_SET_CONTROLS:
    case XCB_XKB_SA_TYPE_LOCK_CONTROLS:
        return switchesOnlyOverlays(action.setcontrols);
    default:
        return false;
    }
}

constexpr std::uint8_t low(std::uint16_t number) {
    return static_cast<std::uint8_t>(number & 0xFFU);
}

constexpr std::uint8_t high(std::uint16_t number) {
    return static_cast<std::uint8_t>(number >> 8U);
}

/// The mark tells our places from those of a session that was never put back.
ActionBytes placeholder(const Snapshot& snapshot, std::uint16_t number) {
    const std::uint16_t mark = snapshot.mark();
    return {XCB_XKB_SA_TYPE_NO_ACTION, 't', 'a', 'p', low(mark), high(mark), low(number), high(number)};
}

std::optional<ActionBytes> originalOf(const ActionBytes& action, const Snapshot& snapshot) {
    const auto number = static_cast<std::uint16_t>(action[6] | action[7] << 8U);
    return action == placeholder(snapshot, number) ? snapshot.action(number) : std::nullopt;
}

} // namespace

bool takeOutServerActions(xcb_connection_t* xcb, std::uint16_t device, Snapshot& snapshot, const SnapshotNote& note) {
    ActionMap map = readActions(xcb, device);
    bool isChanged = false;
    for (auto& action : map.actions) {
        if (isHarmless(action)) {
            continue;
        }
        const auto number = snapshot.keep(std::bit_cast<ActionBytes>(action));
        if (!number) {
            return false;
        }
        action = std::bit_cast<xcb_xkb_action_t>(placeholder(snapshot, *number));
        isChanged = true;
    }
    if (!isChanged) {
        return true;
    }
    note.write(snapshot);
    return writeActions(xcb, device, map);
}

void putBackServerActions(xcb_connection_t* xcb, std::uint16_t device, const Snapshot& snapshot) {
    ActionMap map = readActions(xcb, device);
    bool isChanged = false;
    for (auto& action : map.actions) {
        if (const auto original = originalOf(std::bit_cast<ActionBytes>(action), snapshot)) {
            action = std::bit_cast<xcb_xkb_action_t>(*original);
            isChanged = true;
        }
    }
    if (isChanged) {
        (void)writeActions(xcb, device, map);
    }
}

} // namespace tapalong
