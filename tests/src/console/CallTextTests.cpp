#include "src/console/CallText.h"

#include <gtest/gtest.h>

namespace velbooter::testing {
namespace {

TEST(CallText, EverythingBehindTheNameIsHandedOn) {
    struct Case {
        std::string whole, text;
    };
    const Case cases[] = {
        {"velbooter", ""},
        {"velbooter ", " "},
        {"velbooter  -t 144 mydisk", "  -t 144 mydisk"},
        {"velbooter\tmydisk", "\tmydisk"},
        {"C:\\App\\velbooter.com mydisk C:\\a  b.img ", " mydisk C:\\a  b.img "},
        {"\"C:\\My App\\velbooter.com\"", ""},
        {"\"C:\\My App\\velbooter.com\" mydisk \"x y\" \"", " mydisk \"x y\" \""},
        {"\"C:\\My App\"\\velbooter mydisk", " mydisk"},
        {"\"C:\\My App\\velbooter.com mydisk", ""},
        {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(c.text, TextBehindName(c.whole)) << "[" << c.whole << "]";
}

TEST(CallText, BlanksAreNoArguments) {
    EXPECT_TRUE(IsWithoutArguments(""));
    EXPECT_TRUE(IsWithoutArguments("   "));
    EXPECT_FALSE(IsWithoutArguments(" mydisk"));
    EXPECT_FALSE(IsWithoutArguments(" \"\""));
    EXPECT_FALSE(IsWithoutArguments("\t"));
}

}  // namespace
}  // namespace velbooter::testing
