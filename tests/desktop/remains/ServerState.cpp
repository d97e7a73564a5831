#include "desktop/remains/ServerState.h"

#include "desktop/remains/Replies.h"

#include <xcb/xinput.h>

// XCB's header for XKB uses a word of C++ as a name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iomanip>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace tapalong::test {

namespace {

constexpr std::uint16_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

/// One line of numbers.
template <class... Numbers> void line(std::ostream& out, std::string_view name, Numbers... numbers) {
    out << name << ':';
    ((out << ' ' << static_cast<std::int64_t>(numbers)), ...);
    out << '\n';
}

void bits(std::ostream& out, std::string_view name, std::span<const std::uint8_t> bytes) {
    out << name << ": " << std::hex << std::setfill('0');
    for (const auto each : bytes) {
        out << std::setw(2) << static_cast<unsigned>(each);
    }
    out << std::dec << '\n';
}

/// Locks and controls of a keyboard; nothing for a device that is none.
void writeXkb(xcb_connection_t* xcb, std::uint16_t device, const std::string& of, std::ostream& out) {
    if (const auto s = own(xcb_xkb_get_state_reply(xcb, xcb_xkb_get_state(xcb, device), nullptr))) {
        line(out, "modifiers" + of, s->mods, s->baseMods, s->latchedMods, s->lockedMods);
        line(out, "group" + of, s->group, s->baseGroup, s->latchedGroup, s->lockedGroup);
        line(out, "buttons that are down" + of, s->ptrBtnState);
    }
    if (const auto c = own(xcb_xkb_get_controls_reply(xcb, xcb_xkb_get_controls(xcb, device), nullptr))) {
        line(out, "enabled controls" + of, c->enabledControls);
        line(out, "groups" + of, c->numGroups, c->groupsWrap);
        line(out, "internal and ignored modifiers" + of, c->internalModsMask, c->internalModsRealMods,
             c->internalModsVmods, c->ignoreLockModsMask, c->ignoreLockModsRealMods, c->ignoreLockModsVmods);
        line(out, "repeat, slow, debounce" + of, c->repeatDelay, c->repeatInterval, c->slowKeysDelay, c->debounceDelay);
        line(out, "mouse keys" + of, c->mouseKeysDfltBtn, c->mouseKeysDelay, c->mouseKeysInterval,
             c->mouseKeysTimeToMax, c->mouseKeysMaxSpeed, c->mouseKeysCurve);
        line(out, "AccessX" + of, c->accessXOption, c->accessXTimeout, c->accessXTimeoutOptionsMask,
             c->accessXTimeoutOptionsValues, c->accessXTimeoutMask, c->accessXTimeoutValues);
        bits(out, "keys that repeat" + of, c->perKeyRepeat);
    }
    if (const auto l = own(xcb_xkb_get_indicator_state_reply(xcb, xcb_xkb_get_indicator_state(xcb, device), nullptr))) {
        line(out, "lights" + of, l->state);
    }
}

void writeCore(xcb_connection_t* xcb, std::ostream& out) {
    if (const auto k = own(xcb_get_keyboard_control_reply(xcb, xcb_get_keyboard_control(xcb), nullptr))) {
        line(out, "keyboard", k->global_auto_repeat, k->led_mask, k->key_click_percent, k->bell_percent, k->bell_pitch,
             k->bell_duration);
    }
    if (const auto p = own(xcb_get_pointer_control_reply(xcb, xcb_get_pointer_control(xcb), nullptr))) {
        line(out, "pointer", p->acceleration_numerator, p->acceleration_denominator, p->threshold);
    }
    if (const auto m = own(xcb_get_pointer_mapping_reply(xcb, xcb_get_pointer_mapping(xcb), nullptr))) {
        bits(out, "pointer's buttons",
             {xcb_get_pointer_mapping_map(m.get()),
              static_cast<std::size_t>(xcb_get_pointer_mapping_map_length(m.get()))});
    }
    if (const auto s = own(xcb_get_screen_saver_reply(xcb, xcb_get_screen_saver(xcb), nullptr))) {
        line(out, "screen saver", s->timeout, s->interval, s->prefer_blanking, s->allow_exposures);
    }
}

/// All of a keymap in one number. xkbcomp leaves out what keys do, where the symbols imply it.
void writeKeymap(xcb_connection_t* xcb, std::uint16_t device, const std::string& of, std::ostream& out) {
    constexpr std::uint16_t everything = 0xFF;
    const auto request = xcb_xkb_get_map(xcb, device, everything, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto map = own(xcb_xkb_get_map_reply(xcb, request, nullptr));
    if (!map) {
        return; // not a keyboard
    }
    // Behind the part that tells one answer from another.
    constexpr std::size_t head = offsetof(xcb_xkb_get_map_reply_t, pad0);
    const std::string_view reply(reinterpret_cast<const char*>(map.get()), 32 + std::size_t{map->length} * 4);
    line(out, "keymap with actions" + of, std::hash<std::string_view>{}(reply.substr(head)));
}

/// Where the keys of a device go by themselves, and its events of the extension with them.
void writeFocus(xcb_connection_t* xcb, std::uint16_t device, const std::string& of, std::ostream& out) {
    if (const auto f = own(xcb_input_xi_get_focus_reply(xcb, xcb_input_xi_get_focus(xcb, device), nullptr))) {
        line(out, "focus" + of, f->focus);
    }
}

void writeButtons(xcb_connection_t* xcb, std::uint16_t device, const std::string& of, std::ostream& out) {
    const auto request = xcb_input_get_device_button_mapping(xcb, static_cast<std::uint8_t>(device));
    const auto map = own(xcb_input_get_device_button_mapping_reply(xcb, request, nullptr));
    if (!map) {
        return; // it has none
    }
    bits(out, "buttons" + of, {xcb_input_get_device_button_mapping_map(map.get()), map->map_size});
}

void writeDevices(xcb_connection_t* xcb, std::ostream& out) {
    (void)own(xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    const auto devices =
        own(xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices) {
        return;
    }
    auto each = xcb_input_xi_query_device_infos_iterator(devices.get());
    for (; each.rem > 0; xcb_input_xi_device_info_next(&each)) {
        const std::string number = std::to_string(each.data->deviceid);
        line(out, "device " + number, each.data->type, each.data->attachment, each.data->enabled);
        const std::string of = " of device " + number;
        writeXkb(xcb, each.data->deviceid, of, out);
        writeKeymap(xcb, each.data->deviceid, of, out);
        writeButtons(xcb, each.data->deviceid, of, out);
        writeFocus(xcb, each.data->deviceid, of, out);
    }
}

/// Null only when the server does not answer.
Reply<xcb_get_property_reply_t> propertyOf(xcb_connection_t* xcb, xcb_window_t window, const std::string& name) {
    const auto length = static_cast<std::uint16_t>(name.size());
    const auto atom = own(xcb_intern_atom_reply(xcb, xcb_intern_atom(xcb, 0, length, name.c_str()), nullptr));
    if (!atom) {
        return {nullptr, &std::free};
    }
    constexpr std::uint32_t most = 4096;
    const auto query = xcb_get_property(xcb, 0, window, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, most);
    return own(xcb_get_property_reply(xcb, query, nullptr));
}

void writeProperty(xcb_connection_t* xcb, xcb_window_t root, const std::string& name, std::ostream& out) {
    const auto value = propertyOf(xcb, root, name);
    if (value && value->type == XCB_ATOM_NONE) {
        out << name << ": absent\n";
    } else if (value) {
        bits(out, name,
             {static_cast<const std::uint8_t*>(xcb_get_property_value(value.get())),
              static_cast<std::size_t>(xcb_get_property_value_length(value.get()))});
    }
}

void writeWindows(xcb_connection_t* xcb, xcb_window_t root, std::ostream& out) {
    const auto tree = own(xcb_query_tree_reply(xcb, xcb_query_tree(xcb, root), nullptr));
    if (!tree) {
        return;
    }
    out << "windows, from the lowest:";
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    for (const auto child : children) {
        const auto attributes =
            own(xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, child), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            out << ' ' << std::hex << child << std::dec;
        }
    }
    out << '\n';
}

} // namespace

bool hasProperty(xcb_connection_t* xcb, xcb_window_t window, const std::string& name) {
    const auto value = propertyOf(xcb, window, name);
    return value && value->type != XCB_ATOM_NONE;
}

void writeServerState(xcb_connection_t* xcb, xcb_window_t root, std::ostream& out) {
    (void)own(xcb_xkb_use_extension_reply(xcb, xcb_xkb_use_extension(xcb, 1, 0), nullptr));
    writeXkb(xcb, coreKeyboard, "", out);
    writeCore(xcb, out);
    writeDevices(xcb, out);
    for (const char* const name :
         {"_NET_CURRENT_DESKTOP", "_NET_NUMBER_OF_DESKTOPS", "_NET_SHOWING_DESKTOP", "_NET_WORKAREA",
          "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW", "_XKB_RULES_NAMES", guardsNote}) {
        writeProperty(xcb, root, name, out);
    }
    writeWindows(xcb, root, out);
}

} // namespace tapalong::test
