#include "src/common/INIFile.h"

#include <gtest/gtest.h>

#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

class INIFiles : public ::testing::Test {
 protected:
    ApplicationFolder Folder;
};

TEST_F(INIFiles, CreateIniJoinsFolderAndFileWithOneBackslash) {
    struct Case {
        std::string folder, file, expected;
    };
    const Case cases[] = {
        {"C:\\App\\", "\\files\\x.ini", "C:\\App\\files\\x.ini"},
        {"C:\\App\\\\", "\\\\files\\x.ini", "C:\\App\\files\\x.ini"},
        {"C:\\App", "x.ini", "C:\\App\\x.ini"},
        {"", "x.ini", "\\x.ini"},
        {"\\\\", "", "\\"},
        {"C:\\App/", "/x.ini", "C:\\App/\\/x.ini"},
    };
    for (const Case& c : cases) {
        INIFile ini;
        ini.CreateIni(c.folder, c.file);
        EXPECT_EQ(c.expected, ini.FileName);
    }
}

TEST_F(INIFiles, AFoundValueComesWithOneNulAfterIt) {
    const INIFile ini(Folder.Write("a.ini", "[s]\r\nk=3\r\ntext= two words \r\n"));
    EXPECT_EQ("3\0"s, ini.GetINIKey("s", "k"));
    EXPECT_EQ(3.0, NumericPrefix(ini.GetINIKey("s", "k")));
    EXPECT_EQ("two words\0"s, ini.GetINIKey("s", "text"));
    EXPECT_EQ("two words", TrimAtNul(ini.GetINIKey("s", "text")));
}

TEST_F(INIFiles, AnythingAbsentReadsAsASingleNul) {
    const INIFile ini(Folder.Write("a.ini", "[s]\r\nk=3\r\nempty=\r\n"));
    EXPECT_EQ("\0"s, ini.GetINIKey("s", "other"));
    EXPECT_EQ("\0"s, ini.GetINIKey("other", "k"));
    EXPECT_EQ("\0"s, ini.GetINIKey("s", "empty"));
    EXPECT_EQ("\0"s, INIFile(Folder.At("missing.ini")).GetINIKey("s", "k"));
    EXPECT_EQ("\0"s, INIFile(Folder.At("nowhere\\missing.ini")).GetINIKey("s", "k"));
    EXPECT_EQ("\0"s, INIFile(Folder.MakeFolder("folder.ini")).GetINIKey("s", "k"));
    EXPECT_FALSE(Folder.HasFile("missing.ini"));
}

TEST_F(INIFiles, OnlySpacesInFrontOfTheNulsPlaceAreTrimmed) {
    const INIFile ini(Folder.Write("a.ini", "[s]\r\nk=\"  x  \"\r\n"));
    EXPECT_EQ("x  \0"s, ini.GetINIKey("s", "k"));
}

TEST_F(INIFiles, AValueOf99CharactersOrMoreIsItsFirst99WithoutANul) {
    const std::string text =
        "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567"
        "89012345678901234567890123456789012345678901234567890123456789";
    ASSERT_EQ(150u, text.size());
    for (const size_t length : {97u, 98u, 99u, 100u, 101u, 150u}) {
        const INIFile ini(Folder.Write("v" + std::to_string(length) + ".ini",
                                       "[s]\r\nk=" + text.substr(0, length) + "\r\n"));
        const std::string expected = length < 99 ? text.substr(0, length) + "\0"s : text.substr(0, 99);
        EXPECT_EQ(expected, ini.GetINIKey("s", "k")) << length;
    }
}

TEST_F(INIFiles, LfLineEndsReadTheSame) {
    const INIFile ini(Folder.Write("a.ini", "[s]\nk=3\n[t]\nk=4"));
    EXPECT_EQ("3\0"s, ini.GetINIKey("s", "k"));
    EXPECT_EQ("4\0"s, ini.GetINIKey("t", "k"));
}

TEST_F(INIFiles, WritingMakesTheFile) {
    const INIFile ini(Folder.At("new.ini"));
    ini.SetINIKey("Section", "Key", "value");
    EXPECT_EQ("[Section]\r\nKey=value\r\n", Folder.Read("new.ini"));
}

TEST_F(INIFiles, WritingReplacesOneKeyAndKeepsTheRest) {
    const INIFile ini(Folder.Write("a.ini", "[s]\r\na=1\r\nb=2\r\n[t]\r\na=5\r\n"));
    ini.SetINIKey("s", "a", "9");
    EXPECT_EQ("9\0"s, ini.GetINIKey("s", "a"));
    EXPECT_EQ("2\0"s, ini.GetINIKey("s", "b"));
    EXPECT_EQ("5\0"s, ini.GetINIKey("t", "a"));
}

TEST_F(INIFiles, AnEmptyValueWritesTheKeyAlone) {
    const INIFile ini(Folder.At("new.ini"));
    ini.SetINIKey("s", "k", "");
    EXPECT_EQ("[s]\r\nk=\r\n", Folder.Read("new.ini"));
}

TEST_F(INIFiles, AFailedWriteIsSilent) {
    INIFile(Folder.At("nowhere\\new.ini")).SetINIKey("s", "k", "v");
    INIFile(Folder.MakeFolder("folder.ini")).SetINIKey("s", "k", "v");
    EXPECT_FALSE(Folder.HasFolder("nowhere"));
}

TEST_F(INIFiles, EveryReadGoesToTheFile) {
    const INIFile ini(Folder.Write("a.ini", "[s]\r\nk=3\r\n"));
    EXPECT_EQ("3\0"s, ini.GetINIKey("s", "k"));
    Folder.Write("a.ini", "[s]\r\nk=changed\r\n");
    EXPECT_EQ("changed\0"s, ini.GetINIKey("s", "k"));
}

TEST_F(INIFiles, AnsiBytesArePassedThrough) {
    const INIFile ini(Folder.At("new.ini"));
    ini.SetINIKey("s", "k", "B\xFCro");
    EXPECT_EQ("B\xFCro\0"s, ini.GetINIKey("s", "k"));
    EXPECT_EQ("[s]\r\nk=B\xFCro\r\n", Folder.Read("new.ini"));
}

}  // namespace
}  // namespace velbooter::testing
