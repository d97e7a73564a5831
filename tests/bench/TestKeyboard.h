#pragma once

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace tapalong::bench {

/// Another program on a display that presses keys through the server's test extension.
class TestKeyboard {
public:
    /// That of DISPLAY by itself. Ends the program when there is no display: nothing can be measured then.
    explicit TestKeyboard(const char* display = nullptr) : m_xcb(xcb_connect(display, nullptr), &xcb_disconnect) {
        if (xcb_connection_has_error(m_xcb.get()) != 0) {
            std::fputs("no display\n", stderr);
            std::exit(EXIT_FAILURE);
        }
    }

    TestKeyboard(const TestKeyboard&) = delete;
    TestKeyboard& operator=(const TestKeyboard&) = delete;
    /// Only when the server has done everything: it may drop what a client that is gone had still asked for, and a key
    /// that was not released would answer nobody's next press.
    ~TestKeyboard() {
        std::free(xcb_get_input_focus_reply(m_xcb.get(), xcb_get_input_focus(m_xcb.get()), nullptr)); // NOLINT
    }

    // Keys as in linux/input-event-codes.h.
    void press(std::uint8_t kernelCode) { send(XCB_KEY_PRESS, kernelCode); }
    void release(std::uint8_t kernelCode) { send(XCB_KEY_RELEASE, kernelCode); }
    void tap(std::uint8_t kernelCode) {
        press(kernelCode);
        release(kernelCode);
    }

private:
    void send(std::uint8_t type, std::uint8_t kernelCode) {
        xcb_test_fake_input(m_xcb.get(), type, static_cast<std::uint8_t>(kernelCode + 8), XCB_CURRENT_TIME, XCB_NONE, 0,
                            0, 0);
        xcb_flush(m_xcb.get());
    }

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_xcb;
};

} // namespace tapalong::bench
