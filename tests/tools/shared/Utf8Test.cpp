#include "tools/shared/Utf8.h"

#include <gtest/gtest.h>

namespace tools::testing {
namespace {

TEST(Utf8, AcceptsWhatIsWellFormed) {
    for (const char* text : {"", "abc", "\xC3\xA4", "\xD0\x9C", "\xE2\x82\xAC", "\xEF\xBF\xBD",
                             "\xF0\x9F\x92\xBE", "\xF4\x8F\xBF\xBF", "a\xC3\xA4z"})
        EXPECT_TRUE(IsUtf8(text)) << PrintableBytes(text);
}

TEST(Utf8, RefusesWhatIsMalformed) {
    for (const char* text :
         {"\x80", "\xC3", "\xC3z", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xE4"})
        EXPECT_FALSE(IsUtf8(text)) << PrintableBytes(text);
}

TEST(Utf8, BecomesUtf16WithSurrogatePairs) {
    EXPECT_EQ(u"a\u00E4\u20AC\U0001F4BE", Utf16FromUtf8("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x92\xBE"));
}

TEST(Utf8, ShowsBytesThatAreNoText) {
    EXPECT_EQ("a\\xE4\\x0A", PrintableBytes("a\xE4\n"));
}

TEST(Shown, CannotSteerATerminal) {
    EXPECT_EQ("a?[2Jb??", Shown("a\x1B[2Jb\n\x7F"));
    EXPECT_EQ("a\\u0080\\u009B31mred\\u009F", Shown("a\xC2\x80\xC2\x9B"
                                                    "31mred\xC2\x9F"));
    EXPECT_EQ("a\\x9B31m\\xC2", Shown("a\x9B"
                                      "31m\xC2"));
}

TEST(Shown, ShowsWhatTurnsTheDirectionOrBreaksTheLine) {
    EXPECT_EQ("a\\u202Egpj.exe", Shown("a\xE2\x80\xAEgpj.exe"));
    EXPECT_EQ("\\u061C\\u200E\\u200F\\u2028\\u2029\\u2066\\u2069",
              Shown("\xD8\x9C\xE2\x80\x8E\xE2\x80\x8F\xE2\x80\xA8\xE2\x80\xA9\xE2\x81\xA6\xE2\x81\xA9"));
}

TEST(Shown, LeavesTextAsItIs) {
    for (const char* text : {"", "a b.txt", "caf\xC3\xA9", "\xC2\xA0", "\xE2\x80\x90\xE2\x80\xA7\xE2\x80\xAF",
                             "\xD7\x90\xD8\xA7", "\xF0\x9F\x92\xBE"})
        EXPECT_EQ(text, Shown(text));
    EXPECT_EQ("caf\\xE9s", Shown("caf\xE9s"));
}

TEST(HoldsControl, KnowsBothGroups) {
    for (const char* text : {"a\n", "\x1F", "\x7F", "a\xC2\x80", "\xC2\x9Fz", "\xE9\n"})
        EXPECT_TRUE(HoldsControl(text)) << text;
    for (const char* text : {"", "a ", "\xC2\xA0", "\xE2\x80\xAE", "\x9B"})
        EXPECT_FALSE(HoldsControl(text)) << text;
}

TEST(Utf8, UpperCaseChangesAsciiLettersOnly) {
    EXPECT_EQ("AZ-\xC3\xA4.1", UpperAscii("az-\xC3\xA4.1"));
}

TEST(Utf8, NamesAreOrderedWithoutCaseAndThenByBytes) {
    EXPECT_TRUE(PrecedesWithoutCase("a", "B"));
    EXPECT_FALSE(PrecedesWithoutCase("B", "a"));
    EXPECT_TRUE(PrecedesWithoutCase("A", "a"));
    EXPECT_FALSE(PrecedesWithoutCase("a", "A"));
    EXPECT_FALSE(PrecedesWithoutCase("a", "a"));
    EXPECT_TRUE(PrecedesWithoutCase("a", "ab"));
    EXPECT_TRUE(PrecedesWithoutCase("z", "\xC3\xA4"));
}

TEST(EqualsFolded, OnlyTheCaseOfAsciiLettersIsPassedOver) {
    EXPECT_TRUE(EqualsFolded("", ""));
    EXPECT_TRUE(EqualsFolded("Read Me.txt", "rEAD mE.TXT"));
    EXPECT_FALSE(EqualsFolded("a", "ab"));
    EXPECT_FALSE(EqualsFolded("[", "{")) << "no letters, though their codes differ as those of letters do";
    EXPECT_FALSE(EqualsFolded("\xC3\xA4", "\xC3\x84"));
}

}  // namespace
}  // namespace tools::testing
