// What goes wrong around the program: missing companions, targets that cannot be written, tools that are
// killed. Whatever happens, nothing incomplete bears the target's name, and the next run works.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/support/ApplicationFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/LockedFile.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const kOldImage = "an old image";

void ExpectTheNextRunWorks(const ApplicationFolder& folder) {
    ProgramUnderTest program(folder, " custom out\\disk.img");
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::Built));
    ExpectImage(folder, folder.Path("out\\disk.img"), kSmallImageBytes);
    EXPECT_THAT(folder.Names("out"), ElementsAre("disk.img"));
    ExpectNoWorkingFiles(folder);
}

// Runs a build whose image cannot be written. The image tool's result is not looked at: the run ends like any
// other.
void ExpectARunThatKeepsTheOldImage(const ApplicationFolder& folder) {
    ProgramUnderTest program(folder, " custom out\\disk.img");
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::NoImage));
    EXPECT_THAT(folder.Names("out"), ElementsAre("disk.img"));
    ExpectNoWorkingFiles(folder);
}

ShownMessage NoCabinet(const std::string& name) {
    return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
            "Error While Copying",
            {"OK"},
            Picture::Critical};
}

std::vector<std::string> DiskWithAModule() {
    return SmallDiskWith({"[Create_CABs]", "keyb=LIB"});
}

TEST(Fault, MissingArchiverCancelsTheBuild) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    folder.Write("out\\disk.img", kOldImage);
    std::filesystem::rename(folder.Path("cabarc.exe"), folder.OutsidePath("cabarc.exe"));
    ProgramUnderTest program(folder, " custom out\\disk.img");
    EXPECT_EQ(program.Answer("OK"), NoCabinet("keyb"));
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::Canceled));
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    ExpectNoWorkingFiles(folder);
    std::filesystem::rename(folder.OutsidePath("cabarc.exe"), folder.Path("cabarc.exe"));
    ExpectTheNextRunWorks(folder);
}

TEST(Fault, MissingModuleFolderCancelsTheBuild) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDiskWith({"[Create_CABs]", "nosuch=LIB"}));
    ProgramUnderTest program(folder, " custom out\\disk.img");
    EXPECT_EQ(program.Answer("OK"), NoCabinet("nosuch"));
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::Canceled));
    ExpectNoWorkingFiles(folder);
}

TEST(Fault, MissingImageToolKeepsTheOldImage) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("out\\disk.img", kOldImage);
    std::filesystem::rename(folder.Path("bfi.exe"), folder.OutsidePath("bfi.exe"));
    ExpectARunThatKeepsTheOldImage(folder);
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    std::filesystem::rename(folder.OutsidePath("bfi.exe"), folder.Path("bfi.exe"));
    ExpectTheNextRunWorks(folder);
}

TEST(Fault, ReadOnlyTargetIsKept) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("out\\disk.img", kOldImage);
    ::SetFileAttributesA(folder.Path("out\\disk.img").c_str(), FILE_ATTRIBUTE_READONLY);
    ExpectARunThatKeepsTheOldImage(folder);
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    ::SetFileAttributesA(folder.Path("out\\disk.img").c_str(), FILE_ATTRIBUTE_NORMAL);
    ExpectTheNextRunWorks(folder);
}

TEST(Fault, TargetInUseIsKept) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("out\\disk.img", kOldImage);
    LockedFile lock(folder.Path("out\\disk.img"));
    ExpectARunThatKeepsTheOldImage(folder);
    lock.Release();
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    ExpectTheNextRunWorks(folder);
}

TEST(Fault, FileInPlaceOfTheTargetsFolderIsKept) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("out", "a file");
    ProgramUnderTest program(folder, " custom out\\disk.img");
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::Built));
    EXPECT_EQ(folder.Read("out"), "a file");
    ExpectNoWorkingFiles(folder);
}

TEST(Fault, DiskThatDoesNotFitMakesNoImageInTheSmallSize) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDiskWith({"BIG.BIN=BIG.BIN"}));
    folder.Write("BIG.BIN", std::string(1500000, 'b'));
    {
        ProgramUnderTest small(folder, " -t 144 custom out\\disk.img");
        EXPECT_EQ(small.ExitCode(), Number(ExitCode::Built));
        EXPECT_THAT(folder.Names("out"), IsEmpty());
    }
    ProgramUnderTest large(folder, " -t 288 custom out\\disk.img");
    EXPECT_EQ(large.ExitCode(), Number(ExitCode::Built));
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\disk.img"), kLargeImageBytes);
    EXPECT_EQ(image.Files().at("BIG.BIN"), folder.Read("BIG.BIN"));
}

// Text that takes the archiver a while and packs well.
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

// Waits until a tool has something in its target's folder and is well at work.
void WaitUntilItWrites(const ApplicationFolder& folder, const std::string& tail) {
    constexpr int kTries = 1000;
    constexpr DWORD kStep = 10;
    for (int i = 0; folder.Names(tail).empty(); ++i) {
        if (i == kTries) throw HarnessFailure("nothing appears in " + tail);
        ::Sleep(kStep);
    }
    ::Sleep(10 * kStep);
}

TEST(Kill, ArchiverKilledAtWorkLeavesNoCabinetAndCancelsTheBuild) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    folder.Write("files\\keyb\\LONG.TXT", LongText());
    ProgramUnderTest program(folder, " custom out\\disk.img");
    WaitUntilItWrites(folder, "cabs\\LIB");
    ASSERT_TRUE(KillChild(program.ProcessId(), "cabarc.exe"));
    EXPECT_EQ(program.Message(), NoCabinet("keyb"));
    EXPECT_THAT(folder.Names("cabs\\LIB"), IsEmpty());
    program.Press("OK");
    EXPECT_EQ(program.ExitCode(), Number(ExitCode::Canceled));
    ExpectNoWorkingFiles(folder);
    folder.Remove("files\\keyb\\LONG.TXT");
    ExpectTheNextRunWorks(folder);
}

TEST(Kill, ProgramAndArchiverKilledWhilePackingHinderNoLaterRun) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    folder.Write("out\\disk.img", kOldImage);
    folder.Write("files\\keyb\\LONG.TXT", LongText());
    ProgramUnderTest program(folder, " custom out\\disk.img");
    WaitUntilItWrites(folder, "cabs\\LIB");
    EXPECT_EQ(program.Status(), "Processing custom.ini file ...");
    program.Kill();
    ASSERT_TRUE(KillChild(program.ProcessId(), "cabarc.exe"));
    EXPECT_THAT(folder.Names("cabs\\LIB"), IsEmpty());
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    folder.Remove("files\\keyb\\LONG.TXT");
    ExpectTheNextRunWorks(folder);
}

TEST(Kill, ImageToolKilledAtWorkKeepsTheOldImage) {
    const ApplicationFolder folder;
    folder.SetCustomDisk(SmallDisk());
    // The tool is quick: it may end before it is caught.
    constexpr int kTries = 8;
    bool killed = false;
    for (int i = 0; i < kTries && !killed; ++i) {
        folder.Write("out\\disk.img", kOldImage);
        ProgramUnderTest program(folder, " custom out\\disk.img");
        killed = KillChild(program.ProcessId(), "bfi.exe");
        EXPECT_EQ(program.ExitCode(), Number(ExitCode::Built));
        EXPECT_THAT(folder.Names("out"), ElementsAre("disk.img"));
    }
    ASSERT_TRUE(killed);
    EXPECT_EQ(folder.Read("out\\disk.img"), kOldImage);
    ExpectNoWorkingFiles(folder);
    ExpectTheNextRunWorks(folder);
}

// Kills a tool at many moments of its work, and at the moment when it first changes the folder of its target.
class KilledTool {
 public:
    KilledTool(const ApplicationFolder& folder, std::string commandLine, std::string target)
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
        EXPECT_EQ(StartedTool(commandLine_, folder_.Path()).ExitCode(), 0u);
        return static_cast<DWORD>(::GetTickCount64() - begin);
    }

    void KillAfterFirstChange(DWORD wait) {
        const HANDLE change = ::FindFirstChangeNotificationA(
            folder_.Path("out").c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE);
        ASSERT_NE(change, INVALID_HANDLE_VALUE);
        StartedTool tool(commandLine_, folder_.Path());
        constexpr DWORD kPatience = 10000;
        EXPECT_EQ(::WaitForSingleObject(change, kPatience), WAIT_OBJECT_0);
        ::FindCloseChangeNotification(change);
        ::Sleep(wait);
        tool.Kill();
    }

    // The moments at which a part is made, and is about to get the target's name, may leave the part behind:
    // the next run sees to it.
    void ExpectOldOr(const std::string& complete) {
        const std::string found = folder_.Read("out\\" + target_);
        EXPECT_TRUE(found == kOldImage || found == complete)
            << "neither the old nor the whole new file: " << found.size() << " of " << complete.size()
            << " bytes";
    }

    const ApplicationFolder& folder_;
    const std::string commandLine_;
    const std::string target_;
};

TEST(Kill, ImageIsOldOrCompleteWheneverItsToolIsKilled) {
    const ApplicationFolder folder;
    folder.Write("out\\disk.img", kOldImage);
    KilledTool(folder,
               folder.Path("bfi.exe") + " -b=files\\bootsect.bin -l=Velstart -t=288 -f=\"out\\disk.img\" dos",
               "disk.img")
        .ExpectOldOrNewAtEveryMoment();
}

TEST(Kill, CabinetIsOldOrCompleteWheneverItsToolIsKilled) {
    const ApplicationFolder folder;
    folder.Write("out\\dos.cab", kOldImage);
    folder.Write("dos\\LONG.TXT", LongText().substr(0, 100000));
    KilledTool(folder, folder.Path("cabarc.exe") + " -m LZX:21 -p -r -P dos\\ n out\\dos.cab dos\\*.*",
               "dos.cab")
        .ExpectOldOrNewAtEveryMoment();
}

}  // namespace
}  // namespace velbooter::e2e
