#include "platform/linux/x11guard/ServerKeysGuard.h"

#include "platform/linux/x11guard/Buttons.h"
#include "platform/linux/x11guard/KeyActions.h"
#include "platform/linux/x11guard/OtherSeats.h"

#include <chrono>
#include <thread>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooksAtButtons = 50ms;
constexpr std::uint32_t hotKeys = XCB_XKB_BOOL_CTRL_ACCESS_X_KEYS;

void watchHierarchy(xcb_connection_t* xcb) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL, .mask_len = 1}, .mask = XCB_INPUT_XI_EVENT_MASK_HIERARCHY};
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    xcb_input_xi_select_events(xcb, root, 1, &selection.head);
}

} // namespace

ServerKeysGuard::ServerKeysGuard() : m_xcb(xcb_connect(nullptr, nullptr)) {
    m_isSetUp = xcb_connection_has_error(xcb()) == 0 && setUp();
}

bool ServerKeysGuard::isConnected() const {
    return m_isSetUp && xcb_connection_has_error(xcb()) == 0;
}

bool ServerKeysGuard::setUp() {
    xcb_prefetch_extension_data(xcb(), &xcb_xkb_id);
    xcb_prefetch_extension_data(xcb(), &xcb_input_id);
    const auto* xkb = xcb_get_extension_data(xcb(), &xcb_xkb_id);
    const auto* xinput = xcb_get_extension_data(xcb(), &xcb_input_id);
    if (xkb == nullptr || xkb->present == 0 || xinput == nullptr || xinput->present == 0) {
        return false;
    }
    m_xkbEventBase = xkb->first_event;
    m_xinputOpcode = xinput->major_opcode;
    const auto xkbUse = own(xcb_xkb_use_extension_reply(xcb(), xcb_xkb_use_extension(xcb(), 1, 0), nullptr));
    const auto version = own(xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 2), nullptr));
    if (!xkbUse || xkbUse->supported == 0 || !version || version->major_version < 2) {
        return false;
    }
    m_note.emplace(xcb());
    m_note->takeOver();
    m_snapshot = m_note->read();
    watchHierarchy(xcb());
    return true;
}

// Before the device is read: what changes in between is told.
void ServerKeysGuard::watchKeyboard(std::uint16_t device) {
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_KEY_ACTIONS;
    xcb_xkb_select_events_details_t details{};
    details.affectCtrls = XCB_XKB_CONTROL_CONTROLS_ENABLED;
    details.ctrlDetails = XCB_XKB_CONTROL_CONTROLS_ENABLED;
    xcb_xkb_select_events_aux(xcb(), device, events | XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY, 0, events, parts, parts,
                              &details);
}

// All are saved before the first is changed: what is set on a master is set on its devices too.
bool ServerKeysGuard::close() {
    const auto all = inputDevices(xcb());
    if (!all) {
        return false;
    }
    bool isClosed = true;
    for (const Device& each : *all) {
        isClosed = (!each.hasKeys || saveKeyboard(each)) && isClosed;
    }
    m_note->write(m_snapshot);
    for (const Device& each : *all) {
        isClosed = closeDevice(each) && isClosed;
    }
    return grabOtherSeats(xcb()) && isClosed;
}

bool ServerKeysGuard::saveKeyboard(const Device& keyboard) {
    watchKeyboard(keyboard.id);
    if (m_snapshot.find(keyboard.id) != nullptr) {
        return true;
    }
    const auto locks = lockState(xcb(), keyboard.id);
    const auto controls = enabledControls(xcb(), keyboard.id);
    const auto focus = deviceFocus(xcb(), keyboard.id);
    return locks && controls && focus &&
           m_snapshot.add({.device = keyboard.id, .locks = *locks, .enabledControls = *controls, .focus = *focus});
}

bool ServerKeysGuard::closeDevice(const Device& device) {
    bool isClosed = true;
    if (auto* const saved = device.hasKeys ? m_snapshot.find(device.id) : nullptr) {
        isClosed = closeKeyboard(device, *saved);
    }
    if (device.hasButtons && !device.isMaster) {
        watchButtons(xcb(), device.id);
        isClosed = silenceButtons(xcb(), device.id, m_snapshot, *m_note) && isClosed;
    }
    return isClosed;
}

bool ServerKeysGuard::closeKeyboard(const Device& keyboard, SavedKeyboard& saved) {
    bool isClosed = takeOutServerActions(xcb(), keyboard.id, m_snapshot, *m_note);
    const auto controls = enabledControls(xcb(), keyboard.id);
    saved.enabledControls |= controls.value_or(0) & hotKeys; // switched on meanwhile: the desktop gets them back
    if ((saved.enabledControls & hotKeys) != 0) {
        // Told for each device: those of a master went off with it, and come back alone.
        switchOnWhenWeAreGone(xcb(), keyboard.id, hotKeys);
        isClosed = setControls(xcb(), keyboard.id, hotKeys, 0) && isClosed;
    }
    if (!keyboard.isMaster && deviceFocus(xcb(), keyboard.id) != XCB_INPUT_FOCUS_NONE) {
        isClosed = setDeviceFocus(xcb(), keyboard.id, XCB_INPUT_FOCUS_NONE) && isClosed;
    }
    return isClosed && controls.has_value();
}

void ServerKeysGuard::reopen() {
    if (!m_note->isOurs()) {
        return; // late: another guard has closed everything again, and knows from the note what to put back
    }
    for (const Device& each : inputDevices(xcb()).value_or(std::vector<Device>{})) {
        if (const auto* const saved = m_snapshot.find(each.id)) {
            reopenKeyboard(each, *saved);
        }
    }
    releaseOtherSeats(xcb());
    m_snapshot.forgetKeyboards();
    m_note->write(m_snapshot);
    while (m_note->isOurs() && !reopenButtons()) {
        std::this_thread::sleep_for(betweenLooksAtButtons);
    }
    if (m_note->isOurs()) {
        m_note->remove();
    }
    // The answer says that all of it is done.
    (void)own(xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr));
}

bool ServerKeysGuard::reopenButtons() {
    const auto all = inputDevices(xcb());
    if (!all) {
        return false;
    }
    bool areOpen = true;
    for (const Device& each : *all) {
        if (each.hasButtons && !each.isMaster) {
            areOpen = putBackButtons(xcb(), each.id, m_snapshot) && areOpen;
        }
    }
    return areOpen;
}

void ServerKeysGuard::reopenKeyboard(const Device& keyboard, const SavedKeyboard& saved) {
    putBackServerActions(xcb(), keyboard.id, m_snapshot);
    const auto controls = enabledControls(xcb(), keyboard.id);
    if (controls && *controls != saved.enabledControls) {
        (void)setControls(xcb(), keyboard.id, *controls ^ saved.enabledControls, saved.enabledControls);
    }
    if (const auto locks = lockState(xcb(), keyboard.id); locks && *locks != saved.locks) {
        changeLockState(xcb(), keyboard.id, *locks, saved.locks);
    }
    // Its window may be gone by now, as any window that has the focus may.
    if (!keyboard.isMaster && !setDeviceFocus(xcb(), keyboard.id, saved.focus)) {
        (void)setDeviceFocus(xcb(), keyboard.id, XCB_INPUT_FOCUS_POINTER_ROOT);
    }
}

bool ServerKeysGuard::hasNews() {
    bool found = false;
    while (const auto event = own(xcb_poll_for_event(xcb()))) {
        found = isNews(*event) || found;
    }
    return found;
}

bool ServerKeysGuard::isNews(const xcb_generic_event_t& event) {
    if (kindOf(event) == m_xkbEventBase || tellsOfButtons(xcb(), event)) {
        return true;
    }
    if (xinputTypeOf(event, m_xinputOpcode) != XCB_INPUT_HIERARCHY) {
        return false;
    }
    const auto& hierarchy = as<xcb_input_hierarchy_event_t>(event);
    constexpr std::uint32_t removed = XCB_INPUT_HIERARCHY_MASK_MASTER_REMOVED | XCB_INPUT_HIERARCHY_MASK_SLAVE_REMOVED;
    for (auto each = xcb_input_hierarchy_infos_iterator(&hierarchy); each.rem > 0;
         xcb_input_hierarchy_info_next(&each)) {
        if ((each.data->flags & removed) != 0) {
            m_snapshot.forget(each.data->deviceid);
        }
    }
    return true;
}

} // namespace tapalong
