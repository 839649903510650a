// Which names of members are accepted.

#include "realmode/unpack/MemberPath.h"

#include <gtest/gtest.h>

#include <string>

namespace realmode::unpack::testing {
namespace {

Fault CheckOf(std::string path) {
    return CheckPath(path.data());
}

TEST(MemberPath, NamesOfDosAreTaken) {
    for (const char* name : {"A", "README.TXT", "12345678.123", "a\\b\\c", "BIN\\MEM.EXE", "$~!#%&'(.)-@",
                             "^_`{}", "D.D\\F.F", "N\x81ME.\xE4", "SUB/FILE"})
        EXPECT_EQ(CheckOf(name), Fault::None) << name;
}

TEST(MemberPath, SlashesBecomeBackslashes) {
    std::string path = "A/B\\C/D.E";
    ASSERT_EQ(CheckPath(path.data()), Fault::None);
    EXPECT_EQ(path, "A\\B\\C\\D.E");
}

TEST(MemberPath, WhatLeavesTheTargetIsRefused) {
    for (const char* name : {"..", "..\\A", "A\\..", "A\\..\\..\\B", "../A", "A/../B", "\\A", "/A",
                             "\\\\A\\B", "C:A", "C:\\A", "A\\C:", "A:B", "\\", "..\\"})
        EXPECT_EQ(CheckOf(name), Fault::LeavesTarget) << name;
}

TEST(MemberPath, WhatDosCannotHaveIsRefused) {
    for (const char* name :
         {"",    ".",      ".A",   "A.",    "A..B", "...",   "A.B.C", "123456789", "A.1234", "A B",
          "A\\", "A\\\\B", "A\\.", "A*",    "A?",   "A+B",   "A,B",   "A;B",       "A=B",    "A<B",
          "A>B", "A|B",    "[A]",  "\"A\"", "A\tB", "A\x01", " ",     "...\\A"})
        EXPECT_EQ(CheckOf(name), Fault::NotADosName) << name;
}

TEST(MemberPath, TheFolderOfAPathEndsBeforeItsLastPart) {
    EXPECT_EQ(FolderLength("A"), 0U);
    EXPECT_EQ(FolderLength("AB\\C"), 2U);
    EXPECT_EQ(FolderLength("A\\B\\CD"), 3U);
}

}  // namespace
}  // namespace realmode::unpack::testing
