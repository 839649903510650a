#include "floppy/ShortName.h"

#include <gtest/gtest.h>

#include <string>

namespace floppy::testing {
namespace {

std::string Packed(const std::string& name) {
    const auto shortName = ToShortName(name);
    return shortName ? std::string(shortName->begin(), shortName->end()) : "(none)";
}

TEST(ShortName, IsUpperCasedAndPadded) {
    EXPECT_EQ("IO      SYS", Packed("io.sys"));
    EXPECT_EQ("A          ", Packed("A"));
    EXPECT_EQ("AUTOEXECBAT", Packed("Autoexec.Bat"));
    EXPECT_EQ("_MSNET  NIC", Packed("_msnet.nic"));
    EXPECT_EQ("A!#$%&'(   ", Packed("A!#$%&'("));
    EXPECT_EQ(")-@^`{}~_1 ", Packed(")-@^`{}~._1"));
}

TEST(ShortName, HoldsOnlyWhatDosAllows) {
    for (const char* name : {"", ".", "..", ".txt", "a.", "ninechars", "a.text", "a.b.c", "a b", "a+b", "a,b",
                             "a;b", "a=b", "a[b", "a]b", "\xC3\xA4", "a.b c"})
        EXPECT_EQ("(none)", Packed(name)) << name;
}

TEST(ShortName, DevicesAreKnownWhateverTheirExtension) {
    for (const char* name :
         {"con", "PRN", "Aux.txt", "NUL.tar.gz", "CLOCK$", "com1", "COM9.x", "lpt1", "LPT9", "con .txt"})
        EXPECT_TRUE(IsDeviceName(name)) << name;
    for (const char* name : {"CONS", "COM", "COM0", "COM10", "LPT", "LPTX", "NULL", "AUX1", "ACON", "CLOCK"})
        EXPECT_FALSE(IsDeviceName(name)) << name;
}

TEST(ShortName, OnlyAsciiLettersHaveACase) {
    EXPECT_EQ('A', UpperAscii('a'));
    EXPECT_EQ('Z', UpperAscii('z'));
    for (const char character : {'A', 'Z', '`', '{', '1', '\xE4', '\xFF'})
        EXPECT_EQ(character, UpperAscii(character));
}

}  // namespace
}  // namespace floppy::testing
