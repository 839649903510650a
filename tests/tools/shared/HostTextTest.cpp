#include "tools/shared/HostText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/TestFolder.h"
#include "tools/shared/HostFiles.h"

namespace tools::testing {
namespace {

using ::testing::ElementsAre;

TEST(PathFromUtf8, TakesEitherSlash) {
    const TestFolder folder;
    folder.Write("a/b/c.txt", "x");
    EXPECT_EQ(FileKind::Writable, KindOf(folder.Path("a\\b\\c.txt")));
    EXPECT_EQ(FileKind::Writable, KindOf(folder.Path("a/b\\c.txt")));
}

TEST(PathFromUtf8, RefusesWhatIsNoText) {
    EXPECT_EQ("this name is not UTF-8: a\\xFF", ErrorOf([] { PathFromUtf8("a\xFF"); }));
}

TEST(LongPath, ReachesBeyondTheUsualLimit) {
    const TestFolder folder;
    std::string deep;
    for (int i = 0; i < 8; ++i) deep += std::string(60, static_cast<char>('a' + i)) + "/";
    folder.Write(deep + "file.txt", "far down");
    EXPECT_THAT(folder.Names(deep), ElementsAre("file.txt"));
    EXPECT_EQ(8U, SizeOf(folder.Path(deep + "file.txt")));
    EXPECT_EQ(Utf8FromPath(LongPath(folder.Path("x"))), folder.Text("x")) << "shown as a user writes it";
}

}  // namespace
}  // namespace tools::testing
