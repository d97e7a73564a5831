#include "platform/linux/x11guard/SnapshotNote.h"

#include "platform/linux/x11/ServerKeysNote.h"

#include <chrono>
#include <span>
#include <thread>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 300ms;
constexpr auto betweenLooks = 5ms;
constexpr std::uint8_t bitsOfByte = 8;

} // namespace

SnapshotNote::SnapshotNote(xcb_connection_t* xcb)
    : m_xcb(xcb), m_root(xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root) {
    const auto request = xcb_intern_atom(xcb, 0, serverKeysNote.size(), serverKeysNote.data());
    if (const auto atom = own(xcb_intern_atom_reply(xcb, request, nullptr))) {
        m_name = atom->atom;
    }
}

void SnapshotNote::takeOver() {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (owner() != XCB_NONE && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(betweenLooks);
    }
    m_window = xcb_generate_id(m_xcb);
    xcb_create_window(m_xcb, 0, m_window, m_root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    xcb_set_selection_owner(m_xcb, m_window, m_name, XCB_CURRENT_TIME);
}

xcb_window_t SnapshotNote::owner() const {
    const auto reply = own(xcb_get_selection_owner_reply(m_xcb, xcb_get_selection_owner(m_xcb, m_name), nullptr));
    return reply ? reply->owner : XCB_NONE;
}

Snapshot SnapshotNote::read() const {
    constexpr std::uint32_t most = sizeof(Snapshot) / 4 + 1;
    const auto request = xcb_get_property(m_xcb, 0, m_root, m_name, m_name, 0, most);
    const auto reply = own(xcb_get_property_reply(m_xcb, request, nullptr));
    if (!reply || reply->format != bitsOfByte || reply->bytes_after != 0) {
        return Snapshot::ofNothing();
    }
    const std::span bytes(static_cast<const std::byte*>(xcb_get_property_value(reply.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    return Snapshot::from(bytes).value_or(Snapshot::ofNothing());
}

void SnapshotNote::write(const Snapshot& snapshot) const {
    const auto bytes = snapshot.bytes();
    xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, m_root, m_name, m_name, bitsOfByte,
                        static_cast<std::uint32_t>(bytes.size()), bytes.data());
}

void SnapshotNote::remove() const {
    xcb_delete_property(m_xcb, m_root, m_name);
}

} // namespace tapalong
