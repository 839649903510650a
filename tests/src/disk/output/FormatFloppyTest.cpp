#include "src/disk/output/Floppy.h"

#include <gtest/gtest.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class FloppyFormat : public ApplicationTest {
 protected:
    bool Format(std::int32_t result, const std::string& text, const std::string& title) {
        Screen.ExpectFormatDialog(result);
        if (!text.empty()) Screen.Expect({text, title, Buttons::Ok, Icon::Information});
        return FormatFloppy(App.Screen);
    }
};

TEST_F(FloppyFormat, ClosedWithoutFormatting) {
    EXPECT_FALSE(Format(-3, "You have select not to format the floppy", "Didn't Format"));
}

TEST_F(FloppyFormat, Canceled) {
    EXPECT_FALSE(Format(-2, "You have select to Cancel your format", "Format Cancel"));
}

TEST_F(FloppyFormat, Failed) {
    EXPECT_FALSE(Format(-1, "Error while formating the floppy disk", "Format did not Complete"));
}

TEST_F(FloppyFormat, AnyOtherResultIsASuccessWithoutAMessage) {
    for (const std::int32_t result : {0, 1, 6, -4, 2147483647}) EXPECT_TRUE(Format(result, "", "")) << result;
}

}  // namespace
}  // namespace velbooter::testing
