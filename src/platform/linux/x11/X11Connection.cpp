#include "platform/linux/x11/X11Connection.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace tapalong {

X11Connection::X11Connection() {
    int screen = 0;
    m_xcb.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(m_xcb.get()) != 0) {
        return;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_xcb.get()));
    for (; screen > 0 && screens.rem > 1; --screen) {
        xcb_screen_next(&screens);
    }
    m_root = screens.data->root;
    m_complete = setUpXkb() && setUpXinput();
    if (m_complete) {
        selectOnRoot(0);
        watch();
    }
}

X11Connection::~X11Connection() = default;

bool X11Connection::isUsable() const {
    return m_complete && xcb_connection_has_error(m_xcb.get()) == 0;
}

std::shared_ptr<X11Connection::Listener> X11Connection::listen(Listener listener) {
    auto shared = std::make_shared<Listener>(std::move(listener));
    m_listeners.push_back(shared);
    return shared;
}

void X11Connection::selectOnRoot(std::uint32_t eventMask) {
    const std::uint32_t mask = eventMask | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(xcb(), m_root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(xcb());
}

void X11Connection::dispatchPending() {
    while (const auto event = own(xcb_poll_for_event(xcb()))) {
        dispatch(*event);
    }
    xcb_flush(xcb());
    if (!isUsable() && m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.reset();
        if (const auto lost = std::exchange(m_whenLost, {})) {
            lost();
        }
        // As the toolkit does when its own connection breaks. A session that looks locked would no longer be. Not from
        // here: the main loop may not have begun.
        m_leave.start();
    }
}

bool X11Connection::setUpXkb() {
    if (xkb_x11_setup_xkb_extension(xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &m_xkbEventBase,
                                    nullptr) == 0) {
        return false;
    }
    constexpr std::uint16_t device = XCB_XKB_ID_USE_CORE_KBD;
    constexpr std::uint32_t repeatWithoutRelease = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto flags = xcb_xkb_per_client_flags(xcb(), device, repeatWithoutRelease, repeatWithoutRelease, 0, 0, 0);
    const auto flagsReply = own(xcb_xkb_per_client_flags_reply(xcb(), flags, nullptr));

    constexpr std::uint16_t events =
        XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                       XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_EXPLICIT_COMPONENTS |
                                       XCB_XKB_MAP_PART_KEY_ACTIONS | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                       XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(xcb(), device, events, 0, events, mapParts, mapParts, nullptr);
    return flagsReply != nullptr;
}

bool X11Connection::setUpXinput() {
    const auto* extension = xcb_get_extension_data(xcb(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) {
        return false;
    }
    m_xinputOpcode = extension->major_opcode;
    const auto version = own(xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 2), nullptr));
    return version && (version->major_version > 2 || version->minor_version >= 2);
}

void X11Connection::watch() {
    m_leave.setSingleShot(true);
    QObject::connect(&m_leave, &QTimer::timeout, &m_leave, [] { QCoreApplication::exit(EXIT_FAILURE); });
    m_notifier.emplace(xcb_get_file_descriptor(xcb()), QSocketNotifier::Read);
    QObject::connect(&*m_notifier, &QSocketNotifier::activated, &m_beforeSleep, [this] { dispatchPending(); });
    // Waiting for a reply reads events too; those would lie in the queue with nothing left on the socket.
    if (auto* dispatcher = QAbstractEventDispatcher::instance()) {
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &m_beforeSleep,
                         [this] { dispatchPending(); });
    }
}

void X11Connection::dispatch(const xcb_generic_event_t& event) {
    if (event.response_type == 0) {
        return; // an error of a request that we sent without waiting for its outcome
    }
    std::erase_if(m_listeners, [](const auto& each) { return each.expired(); });
    const auto listeners = m_listeners;
    for (const auto& each : listeners) {
        if (const auto listener = each.lock()) {
            (*listener)(event);
        }
    }
}

} // namespace tapalong
