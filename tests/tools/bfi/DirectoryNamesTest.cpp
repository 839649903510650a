#include "tools/bfi/DirectoryNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestFolder.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using tools::testing::ErrorOf;

std::vector<std::string> Stored(const std::vector<std::string>& names) {
    std::vector<std::string> stored;
    for (const DirectoryName& name : NameEntries("here/", names))
        stored.emplace_back(name.Short.begin(), name.Short.end());
    return stored;
}

TEST(DirectoryNames, LettersBeyondAsciiHaveACaseToo) {
    EXPECT_EQ("here/\xC3\x84rger.text and \xC3\xA4rger.TEXT have the same name on a DOS disk", ErrorOf([] {
                  NameEntries("here/", {"\xC3\x84rger.text", "\xC3\xA4rger.TEXT"});
              }));
}

TEST(DirectoryNames, ANameThatDiffersOnlyByCaseNeedsNoLongName) {
    const auto names = NameEntries("", {"io.sys", "ReadMe.Txt"});
    EXPECT_EQ(1U, names[0].Slots());
    EXPECT_EQ(1U, names[1].Slots());
    EXPECT_THAT(Stored({"io.sys", "ReadMe.Txt"}), ElementsAre("IO      SYS", "README  TXT"));
}

TEST(DirectoryNames, AnyOtherNameGetsALongNameAndAnAlias) {
    const struct {
        const char* Name;
        const char* Alias;
    } cases[] = {
        {"long file name.text", "LONGFI~1TEX"},
        {"a.b.c", "AB~1    C  "},
        {"a b", "AB~1       "},
        {".profile", "PROFIL~1   "},
        {"a+b=c.x,y", "A_B_C~1 X_Y"},
        {"\xC3\xA4\xC3\xB6.txt", "__~1    TXT"},
        {" .txt", "_~1     TXT"},
        {"..x", "_~1     X  "},
        {"ninechars", "NINECH~1   "},
        {"a.text", "A~1     TEX"},
        {"\xF0\x9F\x92\xBE", "_~1        "},
    };
    for (const auto& sample : cases) {
        EXPECT_THAT(Stored({sample.Name}), ElementsAre(sample.Alias)) << sample.Name;
        EXPECT_EQ(NameEntries("", {sample.Name})[0].Long, tools::Utf16FromUtf8(sample.Name));
    }
}

TEST(DirectoryNames, AnAliasIsUniqueInItsFolder) {
    EXPECT_THAT(Stored({"long file 1", "long file 2", "longfi~1", "long file 3"}),
                ElementsAre("LONGFI~2   ", "LONGFI~3   ", "LONGFI~1   ", "LONGFI~4   "));
}

TEST(DirectoryNames, TheNumberOfAnAliasGrowsIntoTheName) {
    std::vector<std::string> names;
    for (int i = 0; i < 1200; ++i) names.push_back("similar long name " + std::to_string(i));
    const std::vector<std::string> stored = Stored(names);
    EXPECT_EQ("SIMILA~9   ", stored[8]);
    EXPECT_EQ("SIMIL~10   ", stored[9]);
    EXPECT_EQ("SIMI~100   ", stored[99]);
    EXPECT_EQ("SIM~1200   ", stored[1199]);
}

TEST(DirectoryNames, ALongNameTakesOneSlotForThirteenUnits) {
    const auto slots = [](std::size_t length) {
        return NameEntries("", {"+" + std::string(length - 1, 'x')})[0].Slots();
    };
    EXPECT_EQ(2U, slots(13));
    EXPECT_EQ(3U, slots(14));
    EXPECT_EQ(3U, slots(26));
    EXPECT_EQ(4U, slots(27));
    EXPECT_EQ(21U, slots(255));
}

TEST(DirectoryNames, RefusesWhatCannotBeStored) {
    const struct {
        const char* Name;
        const char* Reason;
    } cases[] = {
        {"a:b", "holds a character"},   {"a*b", "holds a character"},       {"a?b", "holds a character"},
        {"a\"b", "holds a character"},  {"a<b", "holds a character"},       {"a>b", "holds a character"},
        {"a|b", "holds a character"},   {"a\\b", "holds a character"},      {"a\x01", "holds a character"},
        {"a\x7F", "holds a character"}, {"a.", "ends with a dot"},          {"a ", "ends with a dot"},
        {"nul", "for a device"},        {"com1.long name", "for a device"},
    };
    for (const auto& sample : cases)
        EXPECT_THAT(ErrorOf([&] { NameEntries("here/", {sample.Name}); }), HasSubstr(sample.Reason))
            << sample.Name;
    EXPECT_THAT(ErrorOf([] { NameEntries("here/", {"nul"}); }), HasSubstr("here/nul: "));
    EXPECT_THAT(ErrorOf([] { NameEntries("", {std::string(256, 'x')}); }), HasSubstr("longer than 255"));
}

TEST(DirectoryNames, TwoNamesThatAreOneToDosAreRefused) {
    EXPECT_EQ("here/a.txt and A.TXT have the same name on a DOS disk", ErrorOf([] {
                  NameEntries("here/", {"a.txt", "b", "A.TXT"});
              }));
    EXPECT_EQ("Long Name and long name have the same name on a DOS disk", ErrorOf([] {
                  NameEntries("", {"Long Name", "long name"});
              }));
}

using ::testing::HasSubstr;
using tools::testing::ErrorOf;

TEST(VolumeLabel, IsUpperCasedAndPadded) {
    const floppy::ShortName label = ToVolumeLabel("Velstart");
    EXPECT_EQ("VELSTART   ", std::string(label.begin(), label.end()));
    const floppy::ShortName longest = ToVolumeLabel("my disk no1");
    EXPECT_EQ("MY DISK NO1", std::string(longest.begin(), longest.end()));
}

TEST(VolumeLabel, RefusesWhatDosWouldNotShow) {
    EXPECT_THAT(ErrorOf([] { ToVolumeLabel(""); }), HasSubstr("the volume label is empty"));
    EXPECT_THAT(ErrorOf([] { ToVolumeLabel("twelve chars"); }),
                HasSubstr("-l=twelve chars: a volume label has at most 11"));
    EXPECT_THAT(ErrorOf([] { ToVolumeLabel(" A"); }), HasSubstr("cannot begin with a space"));
    for (const char* label : {"A.B", "A/B", "A*", "A\"", "A+B", "\xC3\xA4"})
        EXPECT_THAT(ErrorOf([&] { ToVolumeLabel(label); }), HasSubstr("a volume label holds only")) << label;
}

}  // namespace
}  // namespace tools::bfi::testing
