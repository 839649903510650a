#include "tools/shared/OutputFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#endif

#include <cstdlib>
#include <fstream>
#include <optional>
#include <thread>

#include "tests/support/LeftPart.h"
#include "tests/support/TestFolder.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/PartName.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

#ifndef _WIN32
namespace {
// Called each time a file is flushed to the device.
std::function<void(int)> onFlush;
}  // namespace

// Replaces the function of the C library: calls onFlush, and has the system do the work.
extern "C" int fsync(int file) {
    if (onFlush) onFlush(file);
    return static_cast<int>(syscall(SYS_fsync, file));
}
#endif

namespace tools::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

TEST(OutputFile, AppearsOnlyWhenItIsCommitted) {
    const TestFolder folder;
    const Bytes content = RandomBytes(70'000, 1);
    OutputFile file(folder.Path("new.bin"));
    file.Write(content);
    EXPECT_FALSE(folder.Exists("new.bin"));
    file.Commit();
    EXPECT_EQ(folder.Read("new.bin"), content);
    EXPECT_THAT(folder.Names(), ElementsAre("new.bin"));
}

TEST(OutputFile, AGapThatIsLeftReadsAsZeros) {
    const TestFolder folder;
    OutputFile file(folder.Path("new.bin"));
    file.WriteAt(3, Bytes{'d'});
    file.WriteAt(0, Bytes{'a'});
    file.Commit();
    EXPECT_EQ((Bytes{'a', 0, 0, 'd'}), folder.Read("new.bin"));
}

TEST(OutputFile, ResizingExtendsWithZerosAndCutsOff) {
    const TestFolder folder;
    OutputFile longer(folder.Path("longer"));
    longer.WriteAt(0, Bytes{'a', 'b'});
    longer.Resize(4);
    longer.Commit();
    OutputFile shorter(folder.Path("shorter"));
    shorter.WriteAt(0, Bytes{'a', 'b'});
    shorter.Resize(1);
    shorter.Commit();
    EXPECT_EQ((Bytes{'a', 'b', 0, 0}), folder.Read("longer"));
    EXPECT_EQ(Bytes{'a'}, folder.Read("shorter"));
}

TEST(OutputFile, MakesMissingParentFolders) {
    const TestFolder folder;
    OutputFile file(folder.Path("one/two/new.bin"));
    file.Write(RandomBytes(1, 1));
    file.Commit();
    EXPECT_TRUE(folder.Exists("one/two/new.bin"));
}

TEST(OutputFile, ReplacesAnOlderFileOnlyAtTheCommit) {
    const TestFolder folder;
    folder.Write("target", "old");
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{'n', 'e', 'w', '!'});
    EXPECT_EQ((Bytes{'o', 'l', 'd'}), folder.Read("target"));
    file.Commit();
    EXPECT_EQ((Bytes{'n', 'e', 'w', '!'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, WithoutACommitNothingChangesAndNothingIsLeft) {
    const TestFolder folder;
    folder.Write("target", "old");
    {
        OutputFile file(folder.Path("target"));
        file.Write(RandomBytes(5000, 1));
    }
    EXPECT_EQ((Bytes{'o', 'l', 'd'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, WriteAtChangesEarlierBytesAndTheAppendingGoesOn) {
    const TestFolder folder;
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{1, 2, 3, 4});
    file.WriteAt(1, Bytes{9, 8});
    EXPECT_EQ(4U, file.Size());
    file.Write(Bytes{5});
    EXPECT_EQ(5U, file.Size());
    file.Commit();
    EXPECT_EQ((Bytes{1, 9, 8, 4, 5}), folder.Read("target"));
}

TEST(OutputFile, AReadOnlyTargetIsRefusedAtOnce) {
    const TestFolder folder;
    folder.Write("target", "old");
    folder.SetReadOnly("target", true);
    EXPECT_EQ(folder.Text("target") + ": is read-only",
              ErrorOf([&] { OutputFile file(folder.Path("target")); }));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, ATargetThatBecameReadOnlyIsRefusedAtTheCommit) {
    const TestFolder folder;
    folder.Write("target", "old");
    {
        OutputFile file(folder.Path("target"));
        folder.SetReadOnly("target", true);
        EXPECT_EQ(folder.Text("target") + ": is read-only", ErrorOf([&] { file.Commit(); }));
    }
    EXPECT_EQ((Bytes{'o', 'l', 'd'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, AFolderIsRefused) {
    const TestFolder folder;
    folder.MakeFolder("target");
    EXPECT_EQ(folder.Text("target") + ": is a folder",
              ErrorOf([&] { OutputFile file(folder.Path("target")); }));
    EXPECT_THAT(ErrorOf([&] { OutputFile file(folder.Path("target") / ""); }),
                HasSubstr("is not the name of a file"));
}

TEST(OutputFile, OfTwoRunsTheSecondIsRefusedAndTheFirstGoesOn) {
    const TestFolder folder;
    OutputFile first(folder.Path("target"));
    first.Write(Bytes{1});
    EXPECT_EQ(folder.Text("target") + ": is being written by another run",
              ErrorOf([&] { OutputFile second(folder.Path("target")); }));
    first.Write(Bytes{2});
    first.Commit();
    EXPECT_EQ((Bytes{1, 2}), folder.Read("target"));
}

TEST(OutputFile, TakesOverWhatAKilledRunLeft) {
    const TestFolder folder;
    folder.Write("target.unfinished~", RandomBytes(10'000, 1));
    testing::MarkAsPart(folder.Path("target.unfinished~"));
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{1, 2, 3});
    file.Commit();
    EXPECT_EQ((Bytes{1, 2, 3}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, AFileOfTheUsersUnderThePartsNameIsKept) {
    const TestFolder folder;
    const Bytes theirs = RandomBytes(10'000, 1);
    folder.Write("target.unfinished~", theirs);
    folder.SetReadOnly("target.unfinished~", true);
    folder.Write("target.unfinished~2", theirs);
    folder.MakeFolder("target.unfinished~3");
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{1, 2, 3});
    EXPECT_EQ(folder.Text("target") + ": is being written by another run",
              ErrorOf([&] { OutputFile second(folder.Path("target")); }));
    file.Commit();
    EXPECT_EQ((Bytes{1, 2, 3}), folder.Read("target"));
    EXPECT_EQ(folder.Read("target.unfinished~"), theirs);
    EXPECT_EQ(folder.Read("target.unfinished~2"), theirs);
    EXPECT_EQ(4U, folder.Names().size());
}

TEST(OutputFile, AHardLinkUnderThePartsNameIsNotWrittenTo) {
    const TestFolder folder;
    folder.Write("victim", "theirs");
    testing::MarkAsPart(folder.Path("victim"));
    std::filesystem::create_hard_link(folder.Path("victim"), folder.Path("target.unfinished~"));
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{1, 2, 3});
    file.Commit();
    EXPECT_EQ((Bytes{1, 2, 3}), folder.Read("target"));
    EXPECT_EQ((Bytes{'t', 'h', 'e', 'i', 'r', 's'}), folder.Read("victim"));
    EXPECT_THAT(folder.Names(), ElementsAre("target", "target.unfinished~", "victim"));
}

TEST(OutputFile, ATargetMayHaveTheLongestName) {
    const TestFolder folder;
    for (const std::size_t length : {243U, 244U, 255U}) {
        const std::string name(length, 'n');
        OutputFile file(folder.Path(name));
        file.Write(Bytes{1, 2, 3});
        file.Commit();
        EXPECT_EQ((Bytes{1, 2, 3}), folder.Read(name)) << length;
    }
    EXPECT_EQ(3U, folder.Names().size());
}

TEST(OutputFile, ACompleteFileIsAnOrdinaryOne) {
    const TestFolder folder;
    OutputFile file(folder.Path("target"));
    file.Commit();
    EXPECT_FALSE(IsPart(folder.Path("target")));
    EXPECT_EQ(kArchive, ListFolder(folder.Path()).at(0).Attributes);
}

TEST(PartName, IsCutWhereItWouldBeTooLong) {
    const auto name = [](const std::string& target, unsigned number) {
        return Utf8FromPath(PartName(PathFromUtf8("folder/" + target), number).filename());
    };
    EXPECT_EQ("a.img.unfinished~", name("a.img", 1));
    EXPECT_EQ("a.img.unfinished~12", name("a.img", 12));
    EXPECT_EQ(std::string(243, 'n') + ".unfinished~", name(std::string(243, 'n'), 1));
    EXPECT_EQ(std::string(243, 'n') + ".unfinished~", name(std::string(244, 'n'), 1));
    EXPECT_EQ(std::string(241, 'n') + ".unfinished~99", name(std::string(255, 'n'), 99));
    // The last character that is kept is complete: two units on Windows, four on POSIX.
    const std::string disk = "\xF0\x9F\x92\xBE";
    std::string disks;
    for (int i = 0; i < 125; ++i) disks += disk;
    const std::string cut = name(disks, 1);
    EXPECT_TRUE(IsUtf8(cut)) << PrintableBytes(cut);
    EXPECT_TRUE(cut.ends_with(disk + ".unfinished~")) << cut;
}

// The process that dies may be another one that runs this test again: it finds the first one's folder in its
// environment.
class KilledRun : public ::testing::Test {
 protected:
    KilledRun() {
        if (const char* const given = std::getenv(kVariable); given != nullptr) {
            folder_ = given;
        } else {
            own_.emplace();
            folder_ = own_->Path();
            SetVariable(folder_.string());
        }
    }
    ~KilledRun() override {
        if (own_) SetVariable("");
    }
    KilledRun(const KilledRun&) = delete;
    KilledRun& operator=(const KilledRun&) = delete;

    const std::filesystem::path& Folder() const { return folder_; }

    [[noreturn]] static void Die() {
#ifdef _WIN32
        TerminateProcess(GetCurrentProcess(), 9);
#else
        std::raise(SIGKILL);
#endif
        std::abort();
    }
#ifdef _WIN32
    ::testing::ExitedWithCode IsKilled{9};
#else
    ::testing::KilledBySignal IsKilled{SIGKILL};
#endif

 private:
    static constexpr const char* kVariable = "VELBOOTER_KILLED_RUN";

    // Sets the environment variable; an empty text removes it.
    static void SetVariable(const std::string& value) {
#ifdef _WIN32
        _putenv_s(kVariable, value.c_str());
#else
        if (value.empty())
            unsetenv(kVariable);
        else
            setenv(kVariable, value.c_str(), 1);
#endif
    }

    std::optional<TestFolder> own_;
    std::filesystem::path folder_;
};

TEST_F(KilledRun, LeavesTheOldTargetAndDoesNotDisturbTheNext) {
    const std::filesystem::path target = Folder() / "target";
    std::ofstream(target) << "old";
    EXPECT_EXIT(
        {
            OutputFile file(target);
            file.Write(RandomBytes(100'000, 1));
            Die();
        },
        IsKilled, "");
    EXPECT_EQ(3U, std::filesystem::file_size(target));
#ifdef _WIN32
    EXPECT_EQ(1U, ListFolder(Folder()).size()) << "the system removes the part with the process";
#endif
    OutputFile file(target);
    file.Write(Bytes{1, 2});
    file.Commit();
    EXPECT_EQ(2U, std::filesystem::file_size(target));
    EXPECT_EQ(1U, ListFolder(Folder()).size());
}

#ifdef _WIN32
TEST(OutputFile, AStreamIsRefused) {
    const TestFolder folder;
    for (const std::string name : {"target:stream", "target::$DATA"}) {
        EXPECT_EQ("\"" + folder.Text(name) + "\": is not the name of a file",
                  ErrorOf([&] { OutputFile file(folder.Path(name)); }));
    }
    EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST(OutputFile, OnAShareThatIsMissingTheTargetIsNamed) {
    EXPECT_THAT(ErrorOf([] { OutputFile file("\\\\velbooter-no-server\\share\\x.img"); }),
                StartsWith("\\\\velbooter-no-server\\share\\x.img: cannot be written: "));
}

// Opens a file as most programs do: others can read and write it meanwhile, but neither delete nor replace
// it.
HANDLE HoldOpen(const std::filesystem::path& path) {
    const HANDLE holder = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    EXPECT_NE(holder, INVALID_HANDLE_VALUE);
    return holder;
}

TEST(OutputFile, ATargetInUseForAMomentIsWaitedFor) {
    const TestFolder folder;
    folder.Write("target", "old");
    const HANDLE reader = HoldOpen(folder.Path("target"));
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{'n', 'e', 'w'});
    std::thread release([&] {
        constexpr DWORD kMoment = 300;
        Sleep(kMoment);
        CloseHandle(reader);
    });
    const std::string error = ErrorOf([&] { file.Commit(); });
    release.join();
    EXPECT_EQ("(no error)", error);
    EXPECT_EQ((Bytes{'n', 'e', 'w'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}

TEST(OutputFile, ATargetInUseStaysAsItIs) {
    const TestFolder folder;
    folder.Write("target", "old");
    const HANDLE reader = HoldOpen(folder.Path("target"));
    {
        OutputFile file(folder.Path("target"));
        file.Write(RandomBytes(100, 1));
        EXPECT_EQ(
            folder.Text("target") + ": cannot be replaced: another program is using it, or it is protected",
            ErrorOf([&] { file.Commit(); }));
    }
    CloseHandle(reader);
    EXPECT_EQ((Bytes{'o', 'l', 'd'}), folder.Read("target"));
    EXPECT_THAT(folder.Names(), ElementsAre("target"));
}
#else
TEST(OutputFile, IsOnTheDeviceBeforeItTakesThePlaceOfTheTarget) {
    const TestFolder folder;
    folder.Write("target", "old");
    std::vector<Bytes> targets;
    std::vector<off_t> sizes;
    onFlush = [&](int file) {
        targets.push_back(folder.Read("target"));
        struct stat status {};
        fstat(file, &status);
        sizes.push_back(status.st_size);
    };
    OutputFile file(folder.Path("target"));
    file.Write(RandomBytes(100, 1));
    file.Commit();
    onFlush = nullptr;
    EXPECT_THAT(targets, ElementsAre(Bytes{'o', 'l', 'd'}));
    EXPECT_THAT(sizes, ElementsAre(100));
    EXPECT_EQ(folder.Read("target"), RandomBytes(100, 1));
}

TEST(OutputFile, ALinkOrAPipeUnderThePartsNameIsNotWrittenTo) {
    const TestFolder folder;
    folder.Write("victim", "theirs");
    std::filesystem::create_symlink("victim", folder.Path("target.unfinished~"));
    std::filesystem::create_symlink("nowhere", folder.Path("target.unfinished~2"));
    ASSERT_EQ(0, mkfifo(folder.Path("target.unfinished~3").c_str(), 0600));
    OutputFile file(folder.Path("target"));
    file.Write(Bytes{1, 2, 3});
    file.Commit();
    EXPECT_EQ((Bytes{1, 2, 3}), folder.Read("target"));
    EXPECT_EQ((Bytes{'t', 'h', 'e', 'i', 'r', 's'}), folder.Read("victim"));
    EXPECT_FALSE(folder.Exists("nowhere"));
}

TEST(OutputFile, AWriteThatFailsNamesTheTargetAndLeavesNothing) {
    const TestFolder folder;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit oldLimit{};
    getrlimit(RLIMIT_FSIZE, &oldLimit);
    const rlimit limit{5000, oldLimit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string error = ErrorOf([&] {
        OutputFile file(folder.Path("target"));
        file.Write(RandomBytes(10'000, 1));
    });
    setrlimit(RLIMIT_FSIZE, &oldLimit);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_THAT(error, StartsWith(folder.Text("target") + ": cannot be written: "));
    EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST(OutputFile, ADeviceIsRefused) {
    EXPECT_EQ("/dev/null: is not an ordinary file", ErrorOf([] { OutputFile file("/dev/null"); }));
}
#endif

}  // namespace
}  // namespace tools::testing
