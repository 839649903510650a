#include "tools/cabarc/Wildcard.h"

#include <gtest/gtest.h>

namespace tools::cabarc::testing {
namespace {

struct PatternCase {
    const char* Pattern;
    const char* Name;
    bool Matches;
};

TEST(Wildcard, MatchesNamesAsDosArchiversDo) {
    const PatternCase cases[] = {
        {"*.*", "a.txt", true},
        {"*.*", "README", true},
        {"*.*", ".hidden", true},
        {"*", "a.txt", true},
        {"*", "", true},
        {"*.", "README", true},
        {"*.", "a.txt", false},
        {"ndis.*", "ndis.dos", true},
        {"ndis.*", "NDIS.TXT", true},
        {"ndis.*", "ndis", true},
        {"ndis.*", "ndis2.dos", false},
        {"ndis.*", "andis.dos", false},
        {"scsi.txt", "SCSI.TXT", true},
        {"scsi.txt", "scsi.txt2", false},
        {"*.txt", "a.b.txt", true},
        {"*.txt", "a.txt.b", false},
        {"*.t?t", "a.tat", true},
        {"*.t?t", "a.tt", false},
        {"?.txt", "a.txt", true},
        {"?.txt", "ab.txt", false},
        {"?.txt", "\xC3\xA9.txt", true},
        {"??.txt", "\xC3\xA9.txt", false},
        {"???.txt", "\xE2\x82\xAC\xC3\xA9x.txt", true},
        {"\xC3\xA9*", "\xC3\xA9t\xC3\xA9", true},
        {"a*b*c", "aXbYbZc", true},
        {"a*b*c", "aXbYbZ", false},
        {"a**b", "ab", true},
        {"", "", true},
        {"", "a", false},
        {"a", "", false},
        {"?", "", false},
        {"foo.", "foo", true},
        {"foo.", "foo.", true},
        {"foo.", "foo.x", false},
    };
    for (const PatternCase& entry : cases) {
        EXPECT_EQ(MatchesPattern(entry.Pattern, entry.Name), entry.Matches)
            << entry.Pattern << " on " << entry.Name;
    }
}

TEST(Wildcard, EndsSoonOnManyStars) {
    const std::string name(250, 'a');
    std::string pattern;
    for (int i = 0; i < 100; ++i) pattern += "*a";
    EXPECT_FALSE(MatchesPattern(pattern + "b", name));
}

TEST(Wildcard, PatternWithoutFolderLooksAtTheLastPartOfAMember) {
    EXPECT_TRUE(MatchesMember("ndis.*", "ndis.dos"));
    EXPECT_TRUE(MatchesMember("ndis.*", "sub\\ndis.dos"));
    EXPECT_TRUE(MatchesMember("*.*", "a\\b\\c"));
    EXPECT_FALSE(MatchesMember("ndis.*", "ndis.d\\x"));
}

TEST(Wildcard, PatternWithFolderMatchesPartByPart) {
    EXPECT_TRUE(MatchesMember("sub\\*.txt", "SUB/a.txt"));
    EXPECT_TRUE(MatchesMember("s*/a.txt", "sub\\a.txt"));
    EXPECT_FALSE(MatchesMember("sub\\*.txt", "a.txt"));
    EXPECT_FALSE(MatchesMember("sub\\*.txt", "sub\\deep\\a.txt"));
    EXPECT_FALSE(MatchesMember("sub\\deep\\*.txt", "sub\\a.txt"));
}

TEST(Wildcard, NoPatternIsEveryMember) {
    EXPECT_TRUE(MatchesAnyMember({}, "x"));
    const std::string patterns[] = {"a", "b"};
    EXPECT_TRUE(MatchesAnyMember(patterns, "b"));
    EXPECT_FALSE(MatchesAnyMember(patterns, "c"));
}

}  // namespace
}  // namespace tools::cabarc::testing
