// Tools that are killed while they work: their output is the old file or the complete new one, never a part
// of it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"
#include "tests/support/LockedFile.h"
#include "tests/support/Patience.h"
#include "tests/support/WinePath.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tools::testing::LockedFile;

// Text that keeps the archiver busy for a while and compresses well.
std::string LongText() {
    constexpr size_t kBytes = 24000000;
    std::string text;
    unsigned number = 1;
    while (text.size() < kBytes) {
        number = number * 1664525u + 1013904223u;
        text += "line " + std::to_string(number >> 20) + " of a long text that is packed\r\n";
    }
    return text;
}

// Waits until a tool has created something in its target's folder and has worked for a moment.
void WaitUntilItWrites(const DemoFolder& folder, const std::string& tail) {
    constexpr DWORD kWellAtWorkMs = 100;
    if (!Eventually([&] { return !folder.Names(tail).empty(); }))
        throw HarnessFailure("nothing appears in " + tail);
    ::Sleep(kWellAtWorkMs);
}

TEST(Kill, ArchiverKilledAtWorkLeavesNoCabinetAndCancelsTheBuild) {
    const DemoFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    folder.Write("files\\keyb\\LONG.TXT", LongText());
    ProgramUnderTest program(folder, " custom out\\disk.img");
    WaitUntilItWrites(folder, "cabs\\LIB");
    ASSERT_TRUE(KillChild(program.ProcessId(), "cabarc.exe"));
    EXPECT_EQ(NoCabinet("keyb"), program.Message());
    EXPECT_THAT(folder.Names("cabs\\LIB"), IsEmpty());
    program.Press("OK");
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    ExpectNoWorkingFiles(folder);
    folder.Remove("files\\keyb\\LONG.TXT");
    ExpectRunWorks(folder);
}

TEST(Kill, ProgramAndArchiverKilledWhilePackingDisturbNoLaterRun) {
    const DemoFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    PutOldImage(folder);
    folder.Write("files\\keyb\\LONG.TXT", LongText());
    ProgramUnderTest program(folder, " custom out\\disk.img");
    WaitUntilItWrites(folder, "cabs\\LIB");
    EXPECT_EQ("Processing custom.ini file ...", program.Status());
    program.Kill();
    ASSERT_TRUE(KillChild(program.ProcessId(), "cabarc.exe"));
    EXPECT_THAT(folder.Names("cabs\\LIB"), IsEmpty());
    ExpectOldImage(folder);
    folder.Remove("files\\keyb\\LONG.TXT");
    ExpectRunWorks(folder);
}

TEST(Kill, ImageToolKilledBeforeItEndsKeepsTheOldImage) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    PutOldImage(folder);
    // The tool has written all and waits for its target when it is killed.
    LockedFile lock(folder.Path(kTarget));
    ProgramUnderTest program(folder, kBuild);
    WaitForThePartOfTheImage(folder);
    ASSERT_TRUE(KillChild(program.ProcessId(), "bfi.exe"));
    lock.Release();
    EXPECT_EQ(Number(ExitCode::NoImage), program.ExitCode());
    ExpectOldImage(folder);
    ExpectNoWorkingFiles(folder);
    ExpectRunWorks(folder);
}

// Kills a tool at many moments of its work, and at the moment when it first changes the folder of its target.
class KilledTool {
 public:
    KilledTool(const DemoFolder& folder, std::string commandLine, std::string target)
        : folder_(folder), commandLine_(std::move(commandLine)), target_(std::move(target)) {}

    void ExpectOldOrNewAtEveryMoment() {
        const DWORD duration = RunToTheEnd();
        const std::string complete = folder_.Read("out\\" + target_);
        constexpr DWORD kMoments = 24;
        int killed = 0;
        for (DWORD i = 0; i < kMoments; ++i) {
            folder_.Write("out\\" + target_, kOldImage);
            StartedTool tool(commandLine_, folder_.Path());
            ::Sleep(duration * i / kMoments);
            if (tool.Kill()) ++killed;
            ExpectOldOr(complete);
        }
        EXPECT_GT(killed, 0) << "the tool was never caught at work";
        for (DWORD wait = 0; wait < kMoments; ++wait) {
            folder_.Write("out\\" + target_, kOldImage);
            KillAfterFirstChange(wait);
            ExpectOldOr(complete);
        }
        RunToTheEnd();
        EXPECT_EQ(folder_.Read("out\\" + target_), complete);
        EXPECT_THAT(folder_.Names("out"), ElementsAre(target_));
    }

 private:
    // Returns how long it took, in milliseconds.
    DWORD RunToTheEnd() {
        folder_.Write("out\\" + target_, kOldImage);
        const ULONGLONG begin = ::GetTickCount64();
        EXPECT_EQ(0u, StartedTool(commandLine_, folder_.Path()).ExitCode());
        return static_cast<DWORD>(::GetTickCount64() - begin);
    }

    void KillAfterFirstChange(DWORD wait) {
        const HANDLE change = ::FindFirstChangeNotificationA(
            folder_.Path("out").c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE);
        ASSERT_NE(change, INVALID_HANDLE_VALUE);
        StartedTool tool(commandLine_, folder_.Path());
        EXPECT_EQ(WAIT_OBJECT_0, ::WaitForSingleObject(change, kPatienceMs));
        ::FindCloseChangeNotification(change);
        ::Sleep(wait);
        tool.Kill();
    }

    // A kill while a part is created, or just before it gets the target's name, may leave the part: the next
    // run deals with it.
    void ExpectOldOr(const std::string& complete) {
        const std::string found = folder_.Read("out\\" + target_);
        EXPECT_TRUE(found == kOldImage || found == complete)
            << "neither the old nor the whole new file: " << found.size() << " of " << complete.size()
            << " bytes";
        RemoveUnmarkedPart();
    }

    // A run recognises the part of an earlier run by its attributes. Windows sets them when it creates a
    // file, Wine a moment later: a tool that is killed in between leaves an empty part that every later run
    // must take for the user's.
    void RemoveUnmarkedPart() const {
        if (UnixPath(folder_.Path()).empty()) return;
        for (const std::string& name : folder_.Names("out")) {
            const std::string part = "out\\" + name;
            const DWORD attributes = ::GetFileAttributesA(folder_.Path(part).c_str());
            if (name != target_ && (attributes & FILE_ATTRIBUTE_SYSTEM) == 0 && folder_.Read(part).empty())
                folder_.Remove(part);
        }
    }

    const DemoFolder& folder_;
    const std::string commandLine_;
    const std::string target_;
};

TEST(Kill, ImageIsOldOrCompleteWheneverItsToolIsKilled) {
    const DemoFolder folder;
    PutOldImage(folder);
    KilledTool(folder,
               folder.Path("bfi.exe") + " -b=files\\bootsect.bin -l=Velstart -t=288 -f=\"out\\disk.img\" dos",
               "disk.img")
        .ExpectOldOrNewAtEveryMoment();
}

TEST(Kill, CabinetIsOldOrCompleteWheneverItsToolIsKilled) {
    const DemoFolder folder;
    folder.Write("out\\dos.cab", kOldImage);
    folder.Write("dos\\LONG.TXT", LongText().substr(0, 100000));
    KilledTool(folder, folder.Path("cabarc.exe") + " -m LZX:21 -p -r -P dos\\ n out\\dos.cab dos\\*.*",
               "dos.cab")
        .ExpectOldOrNewAtEveryMoment();
}

}  // namespace
}  // namespace velbooter::e2e
