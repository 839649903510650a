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
        EXPECT_EQ(Fault::None, CheckOf(name)) << name;
}

TEST(MemberPath, SlashesBecomeBackslashes) {
    std::string path = "A/B\\C/D.E";
    ASSERT_EQ(Fault::None, CheckPath(path.data()));
    EXPECT_EQ("A\\B\\C\\D.E", path);
}

TEST(MemberPath, WhatLeavesTheTargetIsRefused) {
    for (const char* name : {"..", "..\\A", "A\\..", "A\\..\\..\\B", "../A", "A/../B", "\\A", "/A",
                             "\\\\A\\B", "C:A", "C:\\A", "A\\C:", "A:B", "\\", "..\\"})
        EXPECT_EQ(Fault::LeavesTarget, CheckOf(name)) << name;
}

TEST(MemberPath, WhatDosCannotHaveIsRefused) {
    for (const char* name :
         {"",    ".",      ".A",   "A.",    "A..B", "...",   "A.B.C", "123456789", "A.1234", "A B",
          "A\\", "A\\\\B", "A\\.", "A*",    "A?",   "A+B",   "A,B",   "A;B",       "A=B",    "A<B",
          "A>B", "A|B",    "[A]",  "\"A\"", "A\tB", "A\x01", " ",     "...\\A"})
        EXPECT_EQ(Fault::NotADosName, CheckOf(name)) << name;
}

TEST(MemberPath, TheFolderOfAPathEndsBeforeItsLastPart) {
    EXPECT_EQ(0U, FolderLength("A"));
    EXPECT_EQ(2U, FolderLength("AB\\C"));
    EXPECT_EQ(3U, FolderLength("A\\B\\CD"));
}

}  // namespace
}  // namespace realmode::unpack::testing
