#include "desktop/support/XClient.h"

#include "base/Fatal.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>

namespace tapalong::test {

namespace {

constexpr std::uint32_t kernelOffset = 8;

template <class Reply> std::unique_ptr<Reply, void (*)(void*)> own(Reply* reply) {
    return {reply, &std::free};
}

bool isKey(std::uint8_t type) {
    return type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE;
}

} // namespace

XClient::XClient() : m_xcb(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
    verify(xcb_connection_has_error(xcb()) == 0, "the display of the tests can be opened");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(xcb())).data->root;
}

void XClient::press(std::uint32_t kernelCode) {
    fake(XCB_KEY_PRESS, kernelCode + kernelOffset);
}

void XClient::release(std::uint32_t kernelCode) {
    fake(XCB_KEY_RELEASE, kernelCode + kernelOffset);
}

void XClient::tap(std::uint32_t kernelCode) {
    press(kernelCode);
    release(kernelCode);
}

void XClient::chord(const std::vector<std::uint32_t>& kernelCodes) {
    for (const auto code : kernelCodes) {
        press(code);
    }
    std::for_each(kernelCodes.rbegin(), kernelCodes.rend(), [this](auto code) { release(code); });
}

void XClient::pressButton(std::uint8_t button) {
    fake(XCB_BUTTON_PRESS, button);
}

void XClient::releaseButton(std::uint8_t button) {
    fake(XCB_BUTTON_RELEASE, button);
}

void XClient::click(std::uint8_t button) {
    pressButton(button);
    releaseButton(button);
}

void XClient::movePointer(std::int16_t x, std::int16_t y) {
    fake(XCB_MOTION_NOTIFY, 0, x, y);
}

xcb_window_t XClient::openWindow(std::int16_t x, std::int16_t y, std::uint16_t width, std::uint16_t height) {
    const xcb_window_t window = xcb_generate_id(xcb());
    constexpr std::uint32_t mask = XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK;
    const std::uint32_t values[] = {1, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                           XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, window, m_root, x, y, width, height, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask, values);
    xcb_map_window(xcb(), window);
    sync();
    return window;
}

void XClient::focus(xcb_window_t window) {
    xcb_set_input_focus(xcb(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    sync();
}

void XClient::raise(xcb_window_t window) {
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(xcb(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    sync();
}

xcb_window_t XClient::topWindow() const {
    const auto tree = own(xcb_query_tree_reply(xcb(), xcb_query_tree(xcb(), m_root), nullptr));
    const auto* children = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0; --i) {
        const auto attributes =
            own(xcb_get_window_attributes_reply(xcb(), xcb_get_window_attributes(xcb(), children[i]), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            return children[i];
        }
    }
    return XCB_NONE;
}

void XClient::bindKey(std::uint32_t kernelCode) {
    xcb_grab_key(xcb(), 0, m_root, XCB_MOD_MASK_ANY, static_cast<xcb_keycode_t>(kernelCode + kernelOffset),
                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    sync();
}

void XClient::bindButton(std::uint8_t button) {
    xcb_grab_button(xcb(), 0, m_root, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                    XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, button, XCB_MOD_MASK_ANY);
    sync();
}

bool XClient::grabKeyboard() {
    const auto reply = own(xcb_grab_keyboard_reply(
        xcb(), xcb_grab_keyboard(xcb(), 0, m_root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::ungrabKeyboard() {
    xcb_ungrab_keyboard(xcb(), XCB_CURRENT_TIME);
    sync();
}

void XClient::sync() {
    (void)own(xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr));
    takeIn();
}

const std::vector<XClient::Seen>& XClient::seen() {
    sync();
    return m_seen;
}

std::size_t XClient::count(std::uint8_t type, std::uint32_t detail) {
    sync();
    return static_cast<std::size_t>(std::count_if(
        m_seen.begin(), m_seen.end(), [&](const Seen& each) { return each.type == type && each.detail == detail; }));
}

void XClient::fake(std::uint8_t type, std::uint32_t detail, std::int16_t x, std::int16_t y) {
    xcb_test_fake_input(xcb(), type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME, m_root, x, y, 0);
    sync();
}

void XClient::takeIn() {
    while (const auto event = own(xcb_poll_for_event(xcb()))) {
        const auto type = static_cast<std::uint8_t>(event->response_type & 0x7FU);
        if (isKey(type) || type == XCB_BUTTON_PRESS || type == XCB_BUTTON_RELEASE) {
            const auto* input = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            m_seen.push_back({.type = type,
                              .detail = isKey(type) ? input->detail - kernelOffset : input->detail,
                              .window = input->event});
        }
    }
}

void setLayout(const std::string& arguments) {
    // A shell splits the arguments; they are the tests' own literals.
    // NOLINTNEXTLINE(cert-env33-c)
    verify(std::system(("setxkbmap -option '' -layout " + arguments).c_str()) == 0, "setxkbmap sets the layout");
}

} // namespace tapalong::test
