#include "src/common/Text.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <iterator>

#include "src/common/RuntimeError.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

TEST(Text, TrimmingRemovesSpacesAndNothingElse) {
    struct Case {
        std::string text, left, right, both;
    };
    const Case cases[] = {
        {"", "", "", ""},
        {"   ", "", "", ""},
        {"a", "a", "a", "a"},
        {"  a b  ", "a b  ", "  a b", "a b"},
        {"\ta\t", "\ta\t", "\ta\t", "\ta\t"},
        {" \ta\t ", "\ta\t ", " \ta\t", "\ta\t"},
        {"  3\0"s, "3\0"s, "  3\0"s, "3\0"s},
        {"3\0  "s, "3\0  "s, "3\0"s, "3\0"s},
        {"a\r\n", "a\r\n", "a\r\n", "a\r\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(TrimLeft(c.text), c.left) << "[" << c.text << "]";
        EXPECT_EQ(TrimRight(c.text), c.right) << "[" << c.text << "]";
        EXPECT_EQ(Trim(c.text), c.both) << "[" << c.text << "]";
    }
}

TEST(Text, SplittingKeepsEmptyParts) {
    using Parts = std::vector<std::string>;
    EXPECT_EQ((Parts{""}), Split("", '='));
    EXPECT_EQ((Parts{"a"}), Split("a", '='));
    EXPECT_EQ((Parts{"a", "b", "c"}), Split("a=b=c", '='));
    EXPECT_EQ((Parts{"", ""}), Split("=", '='));
    EXPECT_EQ((Parts{"a", "", "b", ""}), Split("a  b ", ' '));
    EXPECT_EQ((Parts{"x\0y"s, "z"}), Split("x\0y z"s, ' '));
}

TEST(Text, CaseFollowsTheAnsiCodePage) {
    EXPECT_EQ("abc 1=z", LowerCase("AbC 1=Z"));
    EXPECT_EQ("ABC 1=Z", UpperCase("AbC 1=z"));
    EXPECT_EQ("", LowerCase(""));
    for (int code = 1; code < 256; ++code) {
        char lower = static_cast<char>(code);
        char upper = static_cast<char>(code);
        CharLowerBuffA(&lower, 1);
        CharUpperBuffA(&upper, 1);
        const std::string text(1, static_cast<char>(code));
        EXPECT_EQ(std::string(1, lower), LowerCase(text)) << code;
        EXPECT_EQ(std::string(1, upper), UpperCase(text)) << code;
    }
}

TEST(Text, CaseKeepsTextAfterANul) {
    EXPECT_EQ("a\0b"s, LowerCase("A\0B"s));
    EXPECT_EQ("A\0B"s, UpperCase("a\0b"s));
}

TEST(Text, BeginningsAndEnds) {
    EXPECT_TRUE(EndsWith("abc", ""));
    EXPECT_TRUE(EndsWith("abc", "bc"));
    EXPECT_TRUE(EndsWith("abc", "abc"));
    EXPECT_FALSE(EndsWith("abc", "zabc"));
    EXPECT_FALSE(EndsWith("abc", "BC"));
    EXPECT_TRUE(StartsWithIgnoringCase("C:\\App\\x", "c:\\aPP"));
    EXPECT_FALSE(StartsWithIgnoringCase("C:\\Ap", "c:\\app"));
    EXPECT_FALSE(StartsWithIgnoringCase("D:\\App", "c:\\app"));
}

// In code page 932 the second byte of the first character is 5C, that of the second one 83.
TEST(Text, ABackslashWithinACharacterIsNone) {
    constexpr unsigned kJapanese = 932;
    const std::string word = "\x95\x5C\x8E\x83";
    EXPECT_EQ((std::vector<std::string>{"NDIS", word, "\x95\x5C"}),
              Split("NDIS\\" + word + "\\\x95\x5C", '\\', kJapanese));
    EXPECT_FALSE(EndsWith("C:\\\x95\x5C", "\\", kJapanese));
    EXPECT_TRUE(EndsWith("C:\\\x95\x5C\\", "\\", kJapanese));
    EXPECT_TRUE(EndsWith(word + ".CAB", ".CAB", kJapanese));
    EXPECT_EQ(2U, FindLastOf("C:\\\x95\x5C", "\\/", kJapanese));
    EXPECT_EQ(5U, FindLastOf("C:\\\x95\x5C\\a", "\\/", kJapanese));
    EXPECT_EQ(std::string::npos, FindLastOf(word, "\\/", kJapanese));
    EXPECT_FALSE(EndsWith("\x95", "\\", kJapanese)) << "half a character at the end";
}

TEST(Text, FindLastOfTakesTheLastOfSeveral) {
    EXPECT_EQ(3U, FindLastOf("a/b\\c", "\\/"));
    EXPECT_EQ(1U, FindLastOf("a/b", "\\/"));
    EXPECT_EQ(std::string::npos, FindLastOf("", "\\/"));
}

TEST(Text, ComparingIgnoresCase) {
    EXPECT_EQ(0, CompareIgnoringCase("abc", "ABC"));
    EXPECT_EQ(0, CompareIgnoringCase("b\xFCro", "B\xDCRO"));
    EXPECT_EQ(0, CompareIgnoringCase("", ""));
}

TEST(Text, ComparingFollowsTheAlphabet) {
    // In ascending order; by their codes "Z" would come before "a", and the accented letters last.
    const std::string rising[] = {"", "1", "2", "a", "AB", "abc", "B", "c", "\xE9t\xE9", "F", "x", "Z", "za"};
    for (size_t i = 0; i < std::size(rising); ++i) {
        for (size_t k = 0; k < std::size(rising); ++k) {
            const int order = CompareIgnoringCase(rising[i], rising[k]);
            EXPECT_EQ(i < k, order < 0) << rising[i] << " " << rising[k];
            EXPECT_EQ(i == k, order == 0) << rising[i] << " " << rising[k];
            EXPECT_EQ(i > k, order > 0) << rising[i] << " " << rising[k];
        }
    }
}

TEST(Text, NumericPrefixReadsTheNumberAtTheBeginning) {
    struct Case {
        std::string text;
        double value;
    };
    const Case cases[] = {
        {"", 0},           {"3", 3},
        {"3\0"s, 3},       {"\0"s, 0},
        {"12abc", 12},     {"abc", 0},
        {"-5", -5},        {"+7", 7},
        {" \t 4", 4},      {"\r\n6", 6},
        {"1.5", 1.5},      {".5", 0.5},
        {"5.", 5},         {".", 0},
        {"-", 0},          {"+", 0},
        {"--1", 0},        {"1.2.3", 1.2},
        {"1,5", 1},        {"1e3", 1000},
        {"1E+2x", 100},    {"25e-1", 2.5},
        {"1e", 1},         {"1e+", 1},
        {"0x10", 0},       {"99999999999", 99999999999.0},
        {"-0.25x", -0.25}, {"007", 7},
        {"inf", 0},        {"nan", 0},
        {"infinity", 0},   {"-.5", -0.5},
        {"1\0002"s, 1},
    };
    for (const Case& c : cases) EXPECT_DOUBLE_EQ(c.value, NumericPrefix(c.text)) << "[" << c.text << "]";
}

TEST(Text, NumericPrefixTakesAVeryLongText) {
    EXPECT_DOUBLE_EQ(1, NumericPrefix("1" + std::string(10'000'000, 'x')));
    EXPECT_DOUBLE_EQ(0, NumericPrefix(std::string(10'000'000, ' ')));
}

TEST(Text, WholeNumberRoundsAHalfToTheEvenNeighbour) {
    struct Case {
        std::string text;
        int value;
    };
    const Case cases[] = {{"", 0},      {"3\0"s, 3}, {"0.5", 0},       {"1.5", 2},         {"2.5", 2},
                          {"3.5", 4},   {"-0.5", 0}, {"-1.5", -2},     {"-2.5", -2},       {"2.4", 2},
                          {"2.6", 3},   {"8.4", 8},  {"32767", 32767}, {"32767.4", 32767}, {"-32768", -32768},
                          {"1e2", 100}, {"x", 0}};
    for (const Case& c : cases) EXPECT_EQ(WholeNumber(c.text), c.value) << "[" << c.text << "]";
}

TEST(Text, WholeNumberBeyond16BitsOverflows) {
    for (const char* text :
         {"32768", "32767.6", "-32769", "1e300", "-1e300", "99999999999999999999", "1e999"}) {
        try {
            WholeNumber(text);
            ADD_FAILURE() << text;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(kOverflow, error.Number) << text;
        }
    }
}

TEST(Text, TrimAtNul) {
    EXPECT_EQ("", TrimAtNul(""));
    EXPECT_EQ("abc", TrimAtNul("abc"));
    EXPECT_EQ("3", TrimAtNul("3\0"s));
    EXPECT_EQ("", TrimAtNul("\0abc"s));
    EXPECT_EQ("a", TrimAtNul("a\0b\0c"s));
    EXPECT_EQ(" a ", TrimAtNul(" a \0 "s));
}

}  // namespace
}  // namespace velbooter::testing
