#include "tools/cabarc/MemberName.h"

#include <gmock/gmock.h>

namespace tools::cabarc::testing {
namespace {

struct StoredCase {
    const char* Path;
    std::vector<std::string> Prefixes;
    const char* Stored;
};

TEST(StoredName, IsTheFileNameAloneWithoutFolders) {
    EXPECT_EQ("a.txt", StoredName("files\\net\\sub\\a.txt", false, {}));
    EXPECT_EQ("a.txt", StoredName("C:a.txt", false, {}));
    const std::string prefixes[] = {"files\\"};
    EXPECT_EQ("a.txt", StoredName("files/net/a.txt", false, prefixes));
}

TEST(StoredName, LosesDriveLeadingSeparatorsAndPrefix) {
    const StoredCase cases[] = {
        {"files\\net\\sub\\a.txt", {}, "files\\net\\sub\\a.txt"},
        {"files\\net\\sub\\a.txt", {"files\\net\\"}, "sub\\a.txt"},
        {"files\\net\\sub\\a.txt", {"files\\net"}, "sub\\a.txt"},
        {"files\\net\\sub\\a.txt", {"FILES/Net/"}, "sub\\a.txt"},
        {"files/net/sub/a.txt", {"files\\net\\"}, "sub\\a.txt"},
        {"files\\network\\a.txt", {"files\\net"}, "files\\network\\a.txt"},
        {"files\\net\\a.txt", {"net"}, "files\\net\\a.txt"},
        {"files\\a.txt", {"files\\a.txt"}, "files\\a.txt"},
        {"files\\net\\a.txt", {"other", "files\\", "files\\net\\"}, "net\\a.txt"},
        {"files\\net\\a.txt", {""}, "files\\net\\a.txt"},
        {"files\\net\\a.txt", {".\\files"}, "net\\a.txt"},
        {"C:\\files\\a.txt", {}, "files\\a.txt"},
        {"C:\\files\\a.txt", {"C:\\files\\"}, "a.txt"},
        {"c:\\files\\a.txt", {"\\files"}, "a.txt"},
        {"\\files\\a.txt", {}, "files\\a.txt"},
        {"/files//a.txt", {}, "files\\a.txt"},
        {".\\files\\.\\a.txt", {}, "files\\a.txt"},
        {"\\\\server\\share\\a.txt", {"\\\\server\\share"}, "a.txt"},
        {"..\\a.txt", {}, "..\\a.txt"},
        {"..\\x\\a.txt", {"..\\x\\"}, "a.txt"},
    };
    for (const StoredCase& entry : cases) {
        EXPECT_EQ(StoredName(entry.Path, true, entry.Prefixes), entry.Stored)
            << entry.Path << " less " << ::testing::PrintToString(entry.Prefixes);
    }
}

TEST(NameProblem, AcceptsRelativePaths) {
    for (const char* name : {"a", "a.txt", "sub\\a.txt", "sub/deep/a", ".hidden", "a..b", "con1", "comx.txt",
                             "com10", "aux-1.txt", "caf\xC3\xA9.txt",
                             "\xC2\xA0"
                             "a",
                             "\xE2\x80\x8F.txt", "a b.txt", "nullo", "~1"}) {
        EXPECT_EQ(NameProblem(name), std::nullopt) << name;
    }
    EXPECT_EQ(NameProblem(std::string(255, 'x')), std::nullopt);
}

TEST(NameProblem, RefusesWhateverCouldLeaveTheFolderOrIsNoFile) {
    for (const char* name : {"",
                             "..",
                             "..\\x",
                             "../x",
                             "sub\\..\\..\\x",
                             "sub\\..",
                             "\\x",
                             "/x",
                             "\\\\server\\share\\x",
                             "C:\\x",
                             "C:x",
                             "c:",
                             "a:b",
                             "sub\\a.txt:stream",
                             ".",
                             ".\\x",
                             "sub\\\\x",
                             "sub\\",
                             "x.",
                             "x ",
                             ".. \\x",
                             "...",
                             "con",
                             "CON",
                             "con.txt",
                             "sub\\nul.txt",
                             "nul\\x",
                             "aux .txt",
                             "COM1",
                             "com\xC2\xB9.txt",
                             "lpt0",
                             "LPT9.x.y",
                             "CONIN$",
                             "conout$.txt",
                             "clock$",
                             "prn",
                             "a\nb",
                             "a\x1B[2J",
                             "a\x7F",
                             "a\xC2\x80",
                             "a\xC2\x9B"
                             "31m",
                             "sub\\a\xC2\x9F",
                             "a<b",
                             "a>b",
                             "a\"b",
                             "a|b",
                             "a?b",
                             "a*b",
                             "\xFF",
                             "\xC3",
                             "\xC0\xAE\xC0\xAE\\x"}) {
        EXPECT_NE(NameProblem(name), std::nullopt) << name;
    }
    EXPECT_NE(NameProblem(std::string(256, 'x')), std::nullopt);
    EXPECT_NE(NameProblem(std::string("a\0b", 3)), std::nullopt);
}

}  // namespace
}  // namespace tools::cabarc::testing
