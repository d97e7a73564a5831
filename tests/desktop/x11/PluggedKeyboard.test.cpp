#include "desktop/support/EventLoop.h"
#include "desktop/x11/ServerKeysTest.h"
#include "platform/linux/x11/ServerKeys.h"

#include <linux/input-event-codes.h>
#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xtest.h>

#include <array>
#include <string>

namespace tapalong {

namespace {

using test::countActions;
using test::DeviceBinding;
using test::DeviceId;
using test::serverActions;
using test::ServerKeysTest;
using test::ServerState;
using test::spinFor;
using test::spinUntil;
using namespace std::chrono_literals;

/// The server's own keyboard, the only one that stands for a real one: the other is XTest's and cannot be taken from its
/// master. To every client it is plugged in when it is attached to the keyboard that all programs share.
class RealKeyboard {
public:
    explicit RealKeyboard(xcb_connection_t* xcb) : m_xcb(xcb) {
        const auto reply =
            own(xcb_input_xi_query_device_reply(xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL), nullptr));
        for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
             xcb_input_xi_device_info_next(&each)) {
            const std::string name(xcb_input_xi_device_info_name(each.data), each.data->name_len);
            if (each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && name.find("XTEST") == std::string::npos) {
                m_device = each.data->deviceid;
                m_master = each.data->attachment;
            }
        }
    }
    ~RealKeyboard() { plugIn(); }
    RealKeyboard(const RealKeyboard&) = delete;
    RealKeyboard& operator=(const RealKeyboard&) = delete;

    [[nodiscard]] DeviceId device() const { return m_device; }

    void plugOut() const {
        change({.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_DETACH_SLAVE, .words = 2, .device = m_device, .master = 0});
    }
    void plugIn() const {
        change(
            {.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ATTACH_SLAVE, .words = 2, .device = m_device, .master = m_master});
    }

    /// A keyboard that is new has a focus that nobody has changed, and this one was there before.
    void becomeNew() const {
        xcb_input_xi_set_focus(m_xcb, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME, m_device);
        waitForServer();
    }
    [[nodiscard]] bool isClosed() const {
        const auto focus = own(xcb_input_xi_get_focus_reply(m_xcb, xcb_input_xi_get_focus(m_xcb, m_device), nullptr));
        return focus->focus == XCB_INPUT_FOCUS_NONE && countActions(m_xcb, m_device, serverActions) == 0;
    }

    void tap(std::uint32_t kernelCode) const {
        const auto firstEvent = xcb_get_extension_data(m_xcb, &xcb_input_id)->first_event;
        for (const int type : {XCB_INPUT_DEVICE_KEY_PRESS, XCB_INPUT_DEVICE_KEY_RELEASE}) {
            xcb_test_fake_input(m_xcb, static_cast<std::uint8_t>(firstEvent + type),
                                static_cast<std::uint8_t>(kernelCode + 8), XCB_CURRENT_TIME, XCB_NONE, 0, 0,
                                static_cast<std::uint8_t>(m_device));
        }
        waitForServer();
    }

private:
    struct Change {
        std::uint8_t opcodes[2]{};
        std::uint16_t length = 0;
        std::uint8_t changes = 1;
        std::uint8_t pad[3]{};
        std::uint16_t type;
        std::uint16_t words;
        std::uint16_t device;
        std::uint16_t master;
    };

    // The library leaves the changes of a hierarchy to its users to put together.
    void change(Change request) const {
        constexpr xcb_protocol_request_t protocol{
            .count = 1, .ext = &xcb_input_id, .opcode = XCB_INPUT_XI_CHANGE_HIERARCHY, .isvoid = 1};
        std::array<iovec, 3> pieces{};
        pieces[2] = {.iov_base = &request, .iov_len = sizeof request};
        xcb_send_request(m_xcb, 0, &pieces[2], &protocol);
        waitForServer();
    }

    void waitForServer() const { (void)own(xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr)); }

    xcb_connection_t* m_xcb;
    DeviceId m_device = 0;
    DeviceId m_master = 0;
};

} // namespace

class PluggedKeyboard : public ServerKeysTest {
protected:
    std::size_t keysOfOurs() { return other.count(XCB_KEY_PRESS, KEY_F9); }

    RealKeyboard keyboard{xcb};
    DeviceBinding binding = DeviceBinding::ofKey(KEY_F9); // of a daemon that knows this keyboard
};

TEST_F(PluggedKeyboard, WithTheKeysOpenAGrabAloneLeavesItsBindings) {
    ASSERT_NE(keyboard.device(), 0);
    ASSERT_TRUE(other.grabKeyboard());
    keyboard.plugOut();
    keyboard.tap(KEY_F9);
    EXPECT_EQ(keysOfOurs(), 0U) << "plugged out, it types to nobody";
    keyboard.plugIn();
    const auto before = binding.presses();
    keyboard.tap(KEY_F9);
    EXPECT_EQ(binding.presses(), before + 1);
}

TEST_F(PluggedKeyboard, PluggedInMeanwhileItIsCapturedWithinASecond) {
    ASSERT_NE(keyboard.device(), 0);
    const auto before = ServerState::read(xcb);
    keyboard.plugOut();
    ASSERT_TRUE(other.grabKeyboard());
    ServerKeys keys;
    keys.close();
    ASSERT_TRUE(keys.areClosed());
    keyboard.becomeNew();
    ASSERT_FALSE(keyboard.isClosed());
    keyboard.plugIn();
    EXPECT_TRUE(spinUntil([&] { return keyboard.isClosed(); }, 1s));
    const auto pressed = binding.presses();
    other.forget();
    keyboard.tap(KEY_F9);
    EXPECT_EQ(keysOfOurs(), 1U);
    EXPECT_EQ(binding.presses(), pressed);
    EXPECT_TRUE(keys.areClosed());
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
    keyboard.tap(KEY_F9);
    EXPECT_EQ(binding.presses(), pressed + 1);
}

TEST_F(PluggedKeyboard, PluggedOutMeanwhileItEndsNothing) {
    ASSERT_NE(keyboard.device(), 0);
    const auto before = ServerState::read(xcb);
    ASSERT_TRUE(other.grabKeyboard());
    ServerKeys keys;
    keys.close();
    keyboard.plugOut();
    spinFor(200ms);
    EXPECT_TRUE(keys.areClosed());
    EXPECT_EQ(countActions(xcb, serverActions), 0U);
    other.forget();
    other.tap(KEY_F9);
    EXPECT_EQ(keysOfOurs(), 1U);
    EXPECT_EQ(binding.presses(), 0U);
    keyboard.plugIn();
    keys.reopen();
    EXPECT_EQ(before.differencesTo(ServerState::read(xcb)), "");
}

} // namespace tapalong
