#include "tools/shared/Utf8.h"

#include <gtest/gtest.h>

namespace tools {
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
    EXPECT_EQ(Utf16FromUtf8("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x92\xBE"), u"a\u00E4\u20AC\U0001F4BE");
}

TEST(Utf8, ShowsBytesThatAreNoText) {
    EXPECT_EQ(PrintableBytes("a\xE4\n"), "a\\xE4\\x0A");
}

TEST(Utf8, UpperCaseChangesAsciiLettersOnly) {
    EXPECT_EQ(UpperAscii("az-\xC3\xA4.1"), "AZ-\xC3\xA4.1");
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

}  // namespace
}  // namespace tools
