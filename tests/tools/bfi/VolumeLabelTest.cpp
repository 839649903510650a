#include "tools/bfi/VolumeLabel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TestFolder.h"

namespace tools::bfi::testing {
namespace {

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
    EXPECT_THAT(ErrorOf([] { ToVolumeLabel(" A"); }), HasSubstr("cannot begin with a blank"));
    for (const char* label : {"A.B", "A/B", "A*", "A\"", "A+B", "\xC3\xA4"})
        EXPECT_THAT(ErrorOf([&] { ToVolumeLabel(label); }), HasSubstr("a volume label holds only")) << label;
}

}  // namespace
}  // namespace tools::bfi::testing
