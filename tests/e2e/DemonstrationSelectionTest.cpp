// The driver selection of the demonstration's disks, with the drivers that the demonstration contains.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/SelectionWindow.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;
using Names = std::vector<std::string>;

Names DriversOf(const DemoFolder& folder, const std::string& group) {
    Names names;
    for (const std::string& file : folder.Names("drivers\\" + group)) {
        const size_t extension = file.rfind(".cab");
        if (extension == std::string::npos) continue;
        names.push_back(file.substr(0, extension));
        for (char& character : names.back()) character = static_cast<char>(::toupper(character));
    }
    return names;
}

TEST(DemonstrationSelection, NetworkDiskTicksItsDefaults) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " -sel demonet out\\net.img");
    const SelectionWindow window(program.DriverSelection());
    ASSERT_TRUE(TakePicture(ScreenshotPath("driver-selection-demonet.png")));
    EXPECT_THAT(window.Names(), UnorderedElementsAreArray(DriversOf(folder, "ndis")));
    EXPECT_THAT(window.Ticked(), UnorderedElementsAre("E100B", "RTL8139"));
    for (const DriverRow& row : window.Rows())
        EXPECT_THAT(row.Description, Not(HasSubstr("Driver"))) << row.Name;
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.ClickBox(0);
    EXPECT_TRUE(Eventually([&] { return window.Ticked().size() == 1; }));
    const std::string only = window.Ticked().front();
    window.Click("OK");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\net.img"), kSmallImageBytes);
    for (const std::string& name : DriversOf(folder, "ndis")) {
        EXPECT_EQ(name == only ? 1u : 0u, image.Files().count("LIB\\NDIS\\" + name + ".CAB")) << name;
    }
}

TEST(DemonstrationSelection, OdiDiskShowsBothGroups) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " -sel demoodi out\\odi.img");
    const SelectionWindow window(program.DriverSelection());
    Names both = DriversOf(folder, "odi16");
    const Names second = DriversOf(folder, "odi32");
    both.insert(both.end(), second.begin(), second.end());
    EXPECT_THAT(window.Names(), UnorderedElementsAreArray(both));
    EXPECT_THAT(window.Ticked(), UnorderedElementsAre("NE2000", "PCNTNW", "CE100B", "PCNTNW"));
    window.Click("Cancel");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\odi.img"), kSmallImageBytes);
    for (const char* path :
         {"ODI16\\NE2000.CAB", "ODI16\\PCNTNW.CAB", "ODI32\\CE100B.CAB", "ODI32\\PCNTNW.CAB"})
        EXPECT_EQ(1u, image.Files().count(std::string("LIB\\") + path)) << path;
}

TEST(DemonstrationSelection, DiskWithScsiAndNetworkShowsTheNetwork) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " -sel demoall out\\all.img");
    const SelectionWindow window(program.DriverSelection());
    EXPECT_THAT(window.Ticked(), UnorderedElementsAre("EL90X", "RTL8029", "DC21X4"));
    window.Click("Unselect All");
    EXPECT_TRUE(Eventually([&] { return window.Ticked().empty(); }));
    window.Click("OK");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\all.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("LIB\\NDIS\\EL90X.CAB"));
    EXPECT_EQ(1u, image.Files().count("LIB\\ASPI\\ASPI8DOS.CAB"));
}

}  // namespace
}  // namespace velbooter::e2e
