// The function that looks for windows. It needs a screen, which may be virtual (scripts/with-display.sh).
#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/Processes.h"

namespace velbooter::testing {
namespace {

TEST(Windows, AWindowIsFoundByClassAndTitle) {
    EXPECT_FALSE(IsWindowPresent("VelbooterTestClass", "Title"));
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = "VelbooterTestClass";
    ASSERT_NE(0, RegisterClassA(&windowClass));
    const HWND window = CreateWindowA("VelbooterTestClass", "Title", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                      windowClass.hInstance, nullptr);
    ASSERT_NE(nullptr, window);
    EXPECT_TRUE(IsWindowPresent("VelbooterTestClass", "Title"));
    EXPECT_FALSE(IsWindowPresent("VelbooterTestClass", "Other"));
    EXPECT_FALSE(IsWindowPresent("OtherClass", "Title"));
    DestroyWindow(window);
    EXPECT_FALSE(IsWindowPresent("VelbooterTestClass", "Title"));
}

}  // namespace
}  // namespace velbooter::testing
