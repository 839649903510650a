#include "tests/e2e/faults/FaultExpectations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/support/Patience.h"
#include "tools/shared/PartName.h"

namespace velbooter::e2e {

using testing::ElementsAre;

std::vector<std::string> DiskWithAModule() {
    return SmallDiskWith({"[Create_CABs]", "keyb=LIB"});
}

void PutOldImage(const DemoFolder& folder) {
    folder.Write(kTarget, kOldImage);
}

void ExpectOldImage(const DemoFolder& folder) {
    EXPECT_THAT(folder.Names("out"), ElementsAre("disk.img"));
    EXPECT_EQ(kOldImage, folder.Read(kTarget));
}

void WaitForThePartOfTheImage(const DemoFolder& folder) {
    if (!Eventually([&] { return folder.Exists(kTarget + std::string(tools::kPartEnding)); }))
        throw HarnessFailure("the image is never written");
}

void ExpectRunWithoutImage(const DemoFolder& folder) {
    ProgramUnderTest program(folder, kBuild);
    EXPECT_EQ(Number(ExitCode::NoImage), program.ExitCode());
    ExpectNoWorkingFiles(folder);
}

void ExpectRunWorks(const DemoFolder& folder) {
    ProgramUnderTest program(folder, kBuild);
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path(kTarget), kSmallImageBytes);
    EXPECT_THAT(folder.Names("out"), ElementsAre("disk.img"));
    ExpectNoWorkingFiles(folder);
}

ShownMessage NoCabinet(const std::string& name) {
    return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
            "Error While Copying",
            {"OK"},
            Picture::Critical};
}

ShownMessage UnreadableSource(const std::string& entry) {
    return {"Error while copying the file from its Source :\r\n" + entry, "Error", {"OK"}, Picture::Critical};
}

ShownMessage FileError(int number, const std::string& text, const std::string& file) {
    return {"Error " + std::to_string(number) + ": " + text + "\r\n" + file,
            "The Veltrane",
            {"OK"},
            Picture::Critical};
}

}  // namespace velbooter::e2e
