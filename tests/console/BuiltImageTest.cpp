#include "console/BuiltImage.h"

#include <gtest/gtest.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

// A 1.44 MB disk whose FAT begins with these bytes.
std::string ImageWithFat(const std::string& fat) {
    std::string image(1474560, '\0');
    return image.replace(512, fat.size(), fat);
}

TEST(BuiltImage, EntriesOfTheFatThatAreNotFreeCount) {
    const ApplicationFolder folder;
    // Clusters 2 and 3 are a chain, 4 is free, 5 is a chain of its own.
    const auto use = UseOfImage(
        folder.Write("disk.img", ImageWithFat("\xF0\xFF\xFF\x03\xF0\xFF" + std::string("\0\xF0\xFF", 3))));
    ASSERT_TRUE(use);
    EXPECT_EQ(3U * 512, use->Used);
    EXPECT_EQ(1457664U, use->Size);
}

TEST(BuiltImage, WhatIsNoFloppyHasNoFigures) {
    const ApplicationFolder folder;
    EXPECT_FALSE(UseOfImage(folder.At("missing.img")));
    EXPECT_FALSE(UseOfImage(folder.Write("short.img", "short")));
    EXPECT_FALSE(UseOfImage(folder.Write("long.img", ImageWithFat("") + "x")));
}

}  // namespace
}  // namespace velbooter::testing
