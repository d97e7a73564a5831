#include "platform/linux/x11/WindowManagerName.h"

#include "desktop/support/XClient.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tapalong::test {

namespace {

class WindowManagerNameTest : public testing::Test {
protected:
    ~WindowManagerNameTest() override {
        xcb_delete_property(m_client.xcb(), m_client.root(), atom("_NET_SUPPORTING_WM_CHECK"));
        m_client.sync();
    }

    xcb_atom_t atom(std::string_view name) {
        auto* xcb = m_client.xcb();
        return own(xcb_intern_atom_reply(
                       xcb, xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(name.size()), name.data()), nullptr))
            ->atom;
    }
    void pointRootTo(xcb_window_t window) {
        xcb_change_property(m_client.xcb(), XCB_PROP_MODE_REPLACE, m_client.root(), atom("_NET_SUPPORTING_WM_CHECK"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        m_client.sync();
    }
    std::string nameNow() { return windowManagerName(m_client.xcb(), m_client.root()); }

    XClient m_client;
};

TEST_F(WindowManagerNameTest, NoWindowManagerHasNoName) {
    EXPECT_EQ(nameNow(), "");
}

TEST_F(WindowManagerNameTest, TheNameIsTheCheckWindows) {
    const auto window = m_client.openWindow(0, 0, 10, 10);
    constexpr std::string_view name = "Mutter(Gala)";
    xcb_change_property(m_client.xcb(), XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_NAME"), atom("UTF8_STRING"), 8,
                        static_cast<std::uint32_t>(name.size()), name.data());
    pointRootTo(window);
    EXPECT_EQ(nameNow(), name);
}

TEST_F(WindowManagerNameTest, AWindowManagerThatIsGoneHasNoName) {
    const auto window = m_client.openWindow(0, 0, 10, 10);
    pointRootTo(window);
    xcb_destroy_window(m_client.xcb(), window);
    m_client.sync();
    EXPECT_EQ(nameNow(), "");
}

} // namespace

} // namespace tapalong::test
