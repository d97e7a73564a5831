#include "app/DesktopRenderer.h"

#include <gtest/gtest.h>

namespace tapalong {
namespace {

TEST(DesktopRenderer, AStandInThatTheProcessorDrawsWithIsNoGraphicsCard) {
    EXPECT_FALSE(isGraphicsCard("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_FALSE(isGraphicsCard("zink Vulkan 1.3(llvmpipe (LLVM 19.1.7, 256 bits) (MESA_LLVMPIPE))"));
    EXPECT_FALSE(isGraphicsCard("softpipe"));
    EXPECT_FALSE(isGraphicsCard("Software Rasterizer"));
    EXPECT_FALSE(isGraphicsCard("ANGLE (Google, Vulkan 1.3.0 (SwiftShader Device (Subzero)), SwiftShader driver)"));
}

TEST(DesktopRenderer, ACardIsOneAlsoBehindAVirtualOne) {
    EXPECT_TRUE(isGraphicsCard("Mesa Intel(R) UHD Graphics 620 (KBL GT2)"));
    EXPECT_TRUE(isGraphicsCard("AMD Radeon Graphics (radeonsi, renoir, LLVM 15.0.6, DRM 3.49)"));
    EXPECT_TRUE(isGraphicsCard("NVIDIA GeForce GTX 1050/PCIe/SSE2"));
    EXPECT_TRUE(isGraphicsCard("virgl (Mesa Intel(R) UHD Graphics 620 (KBL GT2))"));
}

TEST(DesktopRenderer, OpenGlThatSaysNothingIsNoGraphicsCard) {
    EXPECT_FALSE(isGraphicsCard(""));
}

} // namespace
} // namespace tapalong
