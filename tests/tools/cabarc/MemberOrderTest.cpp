#include "tools/cabarc/MemberOrder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <utility>

#include "tests/tools/cabarc/InTestFolder.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::ThrowsMessage;
using Numbers = std::vector<std::size_t>;
using Names = std::vector<std::string>;

Numbers Counted(std::size_t count) {
    Numbers numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = i;
    return numbers;
}

// Returns a resemblance for each pair that looks random and is always the same.
std::uint32_t Scattered(std::size_t a, std::size_t b) {
    const auto mixed = static_cast<std::uint32_t>(a * 70'001 + b) * 0x9E3779B1U >> 16;
    return mixed % 5 == 0 ? mixed % 1'000 : 0;
}

TEST(ChainByResemblance, TakesEachNumberOnce) {
    for (const std::size_t count : {0U, 1U, 2U, 3U, 50U, 700U}) {
        Numbers chain = ChainByResemblance(count, Scattered);
        EXPECT_EQ(chain, ChainByResemblance(count, Scattered));
        std::ranges::sort(chain);
        EXPECT_EQ(Counted(count), chain);
    }
}

TEST(ChainByResemblance, LeavesWhatResemblesNothing) {
    EXPECT_EQ(Counted(100), ChainByResemblance(100, [](std::size_t, std::size_t) { return 0U; }));
}

TEST(ChainByResemblance, LeavesWhatIsAllAlike) {
    EXPECT_EQ(Counted(100), ChainByResemblance(100, [](std::size_t, std::size_t) { return 9U; }));
}

TEST(ChainByResemblance, BringsGroupsTogetherWhereTheirFirstStands) {
    const auto sameGroup = [](std::size_t a, std::size_t b) { return a % 3 == b % 3 ? 1U : 0U; };
    EXPECT_THAT(ChainByResemblance(9, sameGroup), ElementsAre(0, 3, 6, 1, 4, 7, 2, 5, 8));
    const auto evenOnly = [](std::size_t a, std::size_t b) { return a % 2 + b % 2 == 0 ? 1U : 0U; };
    EXPECT_THAT(ChainByResemblance(6, evenOnly), ElementsAre(0, 2, 4, 1, 3, 5));
}

TEST(ChainByResemblance, JoinsTheMostAlikeFirst) {
    // 1 and 3 become neighbours first and 2 joins 1; then only the end of 3 is left for 0.
    const auto resemblance = [](std::size_t a, std::size_t b) {
        if (a == 0) return static_cast<std::uint32_t>(b);
        return a == 1 && b == 3 ? 10U : 5U;
    };
    EXPECT_THAT(ChainByResemblance(4, resemblance), ElementsAre(0, 3, 1, 2));
}

TEST(ChainByResemblance, BeginsAtTheEndWithTheLesserNumber) {
    // The chain 2 - 0 - 1, of which 1 is the lesser end.
    const auto resemblance = [](std::size_t a, std::size_t) { return a == 0 ? 1U : 0U; };
    EXPECT_THAT(ChainByResemblance(3, resemblance), ElementsAre(1, 0, 2));
}

TEST(ChainByResemblance, ComparesUpTo1024FilesWithAllOthers) {
    std::set<std::pair<std::size_t, std::size_t>> compared;
    ChainByResemblance(1'024, [&](std::size_t a, std::size_t b) {
        EXPECT_LT(a, b);
        EXPECT_TRUE(compared.emplace(a, b).second);
        return 0U;
    });
    EXPECT_EQ(1'024U * 1'023U / 2, compared.size());
}

TEST(ChainByResemblance, ComparesNoMorePairsHoweverManyFiles) {
    for (const std::size_t count : {1'025U, 5'000U, 65'535U}) {
        std::size_t calls = 0;
        std::size_t farthest = 0;
        Numbers chain = ChainByResemblance(count, [&](std::size_t a, std::size_t b) {
            ++calls;
            farthest = std::max(farthest, b - a);
            return static_cast<std::uint32_t>((a * b) % 7);
        });
        EXPECT_LE(calls, kMaxPairs);
        EXPECT_EQ(farthest, kMaxPairs / count);
        EXPECT_GE(farthest, 16U);
        std::ranges::sort(chain);
        EXPECT_EQ(Counted(count), chain);
    }
}

class MemberOrder : public InTestFolder {
 protected:
    // Adds a file to those that the search has found.
    void Add(const std::string& name, const Bytes& contents) {
        WriteBytes(name, contents);
        SourceFile file;
        file.Path = name;
        file.Size = contents.size();
        Files.push_back(file);
    }

    // Adds files that have most of their contents in common with those of the same family.
    void AddOfFamily(const std::string& name, std::uint32_t family) {
        Bytes contents = RandomBytes(3'000, family);
        const Bytes own = RandomBytes(500, static_cast<std::uint32_t>(1'000 + Files.size()));
        contents.insert(contents.begin() + 1'000, own.begin(), own.end());
        Add(name, contents);
    }

    Names Ordered(const Names& names) const {
        Names ordered;
        for (const std::size_t number : OrderByContents(Files, names)) ordered.push_back(Files[number].Path);
        return ordered;
    }

    std::vector<SourceFile> Files;
};

TEST_F(MemberOrder, SortsByExtensionInAnyCaseAndKeepsEquals) {
    for (const char* name : {"z.txt", "b.EXE", "c", "a.TXT", "sub.dir/g", "a.exe"}) Add(name, {});
    SortByExtension(Files, Names{"*.*"});
    Names sorted;
    for (const SourceFile& file : Files) sorted.push_back(file.Path);
    EXPECT_THAT(sorted, ElementsAre("c", "sub.dir/g", "b.EXE", "a.exe", "z.txt", "a.TXT"));
}

TEST_F(MemberOrder, BringsFilesWithCommonContentsTogether) {
    for (std::uint32_t i = 0; i < 12; ++i) AddOfFamily(std::to_string(i), 1 + i % 3);
    const Names names = Ordered({"*"});
    ASSERT_EQ(12U, names.size());
    for (std::size_t i = 0; i < 12; ++i)
        EXPECT_EQ(std::stoul(names[i / 4 * 4]) % 3, std::stoul(names[i]) % 3) << i;
    EXPECT_EQ(names, Ordered({"*"}));
}

TEST_F(MemberOrder, KeepsFilesThatAreNamedInTheirPlaces) {
    const std::uint32_t families[] = {1, 2, 1, 1, 2, 1, 2};
    for (const std::uint32_t family : families)
        Add("f" + std::to_string(Files.size()), RandomBytes(3'000, family));
    EXPECT_THAT(Ordered({"*"}), ElementsAre("f0", "f2", "f3", "f5", "f1", "f4", "f6"));
    EXPECT_THAT(Ordered({"f?", "F3"}), ElementsAre("f0", "f2", "f1", "f3", "f4", "f6", "f5"));
    EXPECT_THAT(Ordered({"f0", "f1", "f2", "f3", "f4", "f5", "f6"}),
                ElementsAre("f0", "f1", "f2", "f3", "f4", "f5", "f6"));
}

TEST_F(MemberOrder, LeavesEmptyFilesWhereTheyAre) {
    Add("0", {});
    AddOfFamily("1", 1);
    Add("2", {});
    AddOfFamily("3", 2);
    AddOfFamily("4", 1);
    Add("5", {});
    EXPECT_THAT(Ordered({"*"}), ElementsAre("0", "1", "4", "2", "3", "5"));
}

TEST_F(MemberOrder, ReadsNoFileWhereThereIsNothingToChoose) {
    EXPECT_THAT(Ordered({"*"}), IsEmpty());
    for (const char* name : {"gone", "lost"}) {
        SourceFile file;
        file.Path = name;
        Files.push_back(file);
    }
    EXPECT_THAT(Ordered({"*"}), ElementsAre("gone", "lost"));
}

TEST_F(MemberOrder, NamesTheFirstFileThatCannotBeRead) {
    for (const char* name : {"a", "b", "c", "d"}) Add(name, BytesOf(name));
    std::filesystem::remove("b");
    std::filesystem::remove("c");
    EXPECT_THAT([&] { Ordered({"*"}); }, ThrowsMessage<ToolError>(HasSubstr("b: cannot be opened")));
}

TEST_F(MemberOrder, ComparesTheStartsOfLargeFiles) {
    const Bytes start = RandomBytes(kComparedBytes, 1);
    for (std::uint32_t i = 0; i < 4; ++i) {
        Bytes contents = i % 2 == 0 ? start : RandomBytes(kComparedBytes, 2 + i);
        const Bytes rest = i % 2 == 0 ? RandomBytes(kComparedBytes, 10 + i) : start;
        contents.insert(contents.end(), rest.begin(), rest.end());
        Add(std::to_string(i), contents);
    }
    EXPECT_THAT(Ordered({"*"}), ElementsAre("0", "2", "1", "3"));
}

}  // namespace
}  // namespace tools::cabarc::testing
