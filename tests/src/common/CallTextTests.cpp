#include "src/common/CallText.h"

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

// The everyday line of a batch file, "%~dp0"velbooter.exe, has its quotes around the folder alone.
TEST(CallText, OneBlankOrTabBehindTheNameIsDropped) {
    struct Case {
        std::string whole, text;
    };
    const Case cases[] = {
        {"velbooter.exe", ""},
        {"velbooter.exe ", ""},
        {"velbooter.exe  ", " "},
        {"velbooter.exe mydisk", "mydisk"},
        {"velbooter.exe  mydisk ", " mydisk "},
        {"velbooter.exe\tmydisk", "mydisk"},
        {"velbooter.exe\t-t 144 mydisk", "-t 144 mydisk"},
        {"velbooter.exe \tmydisk", "\tmydisk"},
        {"C:\\App\\velbooter.exe -t 144 mydisk C:\\a b.img", "-t 144 mydisk C:\\a b.img"},
        {"\"C:\\My App\\velbooter.exe\"", ""},
        {"\"C:\\My App\\velbooter.exe\" ", ""},
        {"\"C:\\My App\\velbooter.exe\" mydisk \"x y\"", "mydisk \"x y\""},
        {"\"C:\\My App\\\"velbooter.exe -t 144 mydisk out\\b.img", "-t 144 mydisk out\\b.img"},
        {"\"C:\\My App\"\\velbooter.exe", ""},
        {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(c.text, ArgumentsOf(c.whole)) << "[" << c.whole << "]";
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
