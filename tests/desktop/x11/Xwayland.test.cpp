#include "platform/linux/x11/Xwayland.h"

#include "desktop/support/XClient.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace tapalong {

namespace {

/// A pair of master devices, the only ones that a virtual server makes.
void addDevices(const test::XClient& client, std::string_view name) {
    xcb_input_add_master_t add{};
    add.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER;
    add.name_len = static_cast<std::uint16_t>(name.size());
    const std::size_t padded = (name.size() + 3) / 4 * 4;
    add.len = static_cast<std::uint16_t>((sizeof add + padded) / 4);
    std::vector<char> change(sizeof add + padded);
    std::memcpy(change.data(), &add, sizeof add);
    std::memcpy(change.data() + sizeof add, name.data(), name.size());
    const auto request = xcb_input_xi_change_hierarchy_checked(
        client.xcb(), 1, reinterpret_cast<const xcb_input_hierarchy_change_t*>(change.data()));
    ASSERT_EQ(own(xcb_request_check(client.xcb(), request)), nullptr);
}

} // namespace

TEST(Xwayland, IsKnownByTheNamesOfItsDevices) {
    const test::XClient client;
    EXPECT_FALSE(isXwayland(client.xcb()));
    addDevices(client, "xwayland-keyboard:11");
    EXPECT_TRUE(isXwayland(client.xcb()));
}

} // namespace tapalong
