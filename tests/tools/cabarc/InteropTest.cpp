// What cabarc packs, unpacked by programs that others wrote: each must restore every file byte for byte
// under its name, and those that restore times must restore the right ones.

#include <gmock/gmock.h>

#include <functional>
#include <ostream>
#include <set>
#include <string>

#include "tests/tools/cabarc/InTestFolder.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::HasSubstr;

struct Unpacker {
    const char* Name;
    const char* Command;  ///< unpacks out.cab into the folder unpacked
    bool RestoresTimes;
};

const Unpacker kUnpackers[] = {
    {"cabextract", "env LC_ALL=C.UTF-8 cabextract -q -d unpacked out.cab", true},
    {"7z", "env LC_ALL=C.UTF-8 7z x -y -ounpacked out.cab", true},
    {"gcab", "env LC_ALL=C.UTF-8 gcab -x -n -C unpacked out.cab", false},
    {"bsdtar", "env LC_ALL=C.UTF-8 bsdtar -x -C unpacked -f out.cab", true},
};

struct Tree {
    const char* Name;
    std::function<void()> Make;  ///< fills the folder in

    friend std::ostream& operator<<(std::ostream& out, const Tree& tree) { return out << tree.Name; }
};

void MakeMixedTree() {
    WriteBytes("in/autoexec.bat", TextLike(3000));
    WriteBytes("in/empty", {});
    WriteBytes("in/bin/noise.bin", RandomBytes(150001));
    WriteBytes("in/bin/zeros", Bytes(100000));
    WriteBytes("in/bin/deep/er/prose.txt", TextLike(400000, 7));
    WriteBytes("in/one", {0});
    WriteBytes("in/zz-last-empty", {});
    SetTime("in/autoexec.bat", 1994, 5, 31, 6, 22, 0);
    SetTime("in/bin/noise.bin", 2024, 2, 29, 23, 59, 58);
}

void MakeFarMatches() {
    // Longer than the largest window, with repetitions from one end to the other.
    Bytes data = RandomBytes(1500000, 3);
    const Bytes prose = TextLike(1200000, 4);
    data.insert(data.end(), prose.begin(), prose.end());
    const Bytes again(data.begin() + 700000, data.begin() + 1000000);
    data.insert(data.end(), again.begin(), again.end());
    WriteBytes("in/long.bin", data);
    WriteBytes("in/prose.txt", prose);
}

void MakeBorders() {
    for (const std::size_t size : {1U, 32767U, 32768U, 32769U, 65535U, 65536U, 98304U}) {
        WriteBytes("in/p" + std::to_string(size), TextLike(size, static_cast<std::uint32_t>(size)));
        WriteBytes("in/n" + std::to_string(size), RandomBytes(size, static_cast<std::uint32_t>(size)));
    }
}

void MakeForeignNames() {
    WriteBytes("in/caf\xC3\xA9/na\xC3\xAFve.txt", BytesOf("latin"));
    WriteBytes("in/\xD0\xBF\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82", BytesOf("cyrillic"));
    WriteBytes("in/\xE6\xBC\xA2\xE5\xAD\x97.dat", BytesOf("han"));
    WriteBytes("in/plain.txt", BytesOf("ascii"));
}

void MakeOneByte() {
    WriteBytes("in/x", {42});
}

void MakeEmptyFiles() {
    WriteBytes("in/a", {});
    WriteBytes("in/sub/b", {});
}

const Tree kTrees[] = {{"Mixed", MakeMixedTree}, {"FarMatches", MakeFarMatches},
                       {"Borders", MakeBorders}, {"ForeignNames", MakeForeignNames},
                       {"OneByte", MakeOneByte}, {"EmptyFiles", MakeEmptyFiles}};

const std::string kMethods[] = {"NONE", "MSZIP", "LZX:15", "LZX:18", "LZX:21"};

std::map<std::string, DosTime> TimesOf(const std::string& folder) {
    std::map<std::string, DosTime> times;
    for (const HostFile& entry : ListFolder(PathFromUtf8(folder))) {
        const std::string path = folder + "/" + entry.Name;
        if (entry.IsFolder) {
            for (const auto& [name, time] : TimesOf(path)) times[entry.Name + "/" + name] = time;
        } else {
            times[entry.Name] = entry.Modified;
        }
    }
    return times;
}

class Interop : public InTestFolder, public ::testing::WithParamInterface<std::tuple<Tree, std::string>> {};

TEST_P(Interop, OthersUnpackIt) {
    const auto& [tree, method] = GetParam();
    tree.Make();
    const ProgramResult packed = RunCabarc("-m " + method + " -p -r -P in\\ n out.cab in\\*.*");
    ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
    const auto files = TreeOf("in");
    const auto times = TimesOf("in");
    for (const Unpacker& unpacker : kUnpackers) {
        std::filesystem::remove_all("unpacked");
        std::filesystem::create_directory("unpacked");
        const ProgramResult result = RunLine(unpacker.Command);
        EXPECT_EQ(0, result.ExitCode) << unpacker.Name << ": " << result.All();
        EXPECT_TRUE(TreeOf("unpacked") == files) << unpacker.Name << " gives other files or contents";
        if (!unpacker.RestoresTimes) continue;
        EXPECT_TRUE(TimesOf("unpacked") == times) << unpacker.Name << " gives other times";
    }
    const ProgramResult tested = RunLine("cabextract -t out.cab");
    EXPECT_EQ(0, tested.ExitCode) << tested.All();
}

INSTANTIATE_TEST_SUITE_P(Trees, Interop,
                         ::testing::Combine(::testing::ValuesIn(kTrees), ::testing::ValuesIn(kMethods)),
                         [](const auto& info) {
                             std::string method = std::get<1>(info.param);
                             std::erase(method, ':');
                             return std::get<0>(info.param).Name + method;
                         });

class InteropAttributes : public InTestFolder {};

TEST_F(InteropAttributes, AreSeenByOthers) {
    WriteBytes("in/open", BytesOf("x"));
    WriteBytes("in/shut", BytesOf("y"));
    ASSERT_TRUE(SetTimeAndAttributes("in/shut", PackDosTime(1995, 1, 2, 3, 4, 6), kReadOnly));
    ASSERT_EQ(0, RunCabarc("n out.cab in/*").ExitCode);
    const ProgramResult listed = RunLine("7z l -slt out.cab");
    EXPECT_THAT(listed.Output, HasSubstr("Path = open\nSize = 1\nModified ="));
    EXPECT_THAT(listed.Output, HasSubstr("Attributes = A"));
    EXPECT_THAT(listed.Output, HasSubstr("Path = shut\nSize = 1\nModified = 1995-01-02 03:04:06"));
    EXPECT_THAT(listed.Output, HasSubstr("Attributes = R"));
}

class InteropMany : public InTestFolder {};

TEST_F(InteropMany, ThirtyThousandFilesArePackedAndUnpacked) {
    for (int i = 0; i < 30000; ++i) {
        const std::string number = std::to_string(100000 + i);
        WriteBytes("in/" + number.substr(0, 3) + "/" + number + ".txt", BytesOf("file " + number + "\r\n"));
    }
    const ProgramResult packed = RunCabarc("-m LZX:21 -p -r -P in n out.cab in\\*.*");
    ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
    EXPECT_THAT(packed.Output, HasSubstr("30000 files"));
    // Files so much alike are stored in any order: each name must still have its contents.
    std::set<std::string> names;
    std::string expected;
    for (const ParsedMember& member : Parse(ReadBytes("out.cab")).Members) {
        names.insert(member.Name);
        ASSERT_EQ(14U, member.Name.size());
        expected += "file " + member.Name.substr(4, 6) + "\r\n";
    }
    EXPECT_EQ(30000U, names.size());
    const ProgramResult unpacked = RunLine("cabextract -q -p out.cab");
    EXPECT_EQ(0, unpacked.ExitCode);
    EXPECT_TRUE(unpacked.Output == expected);
    EXPECT_EQ(0, RunLine("7z t out.cab").ExitCode);
}

}  // namespace
}  // namespace tools::cabarc::testing
