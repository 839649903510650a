#include "tools/bfi/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tools/shared/ToolError.h"

namespace tools::bfi::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// Parses and returns the error, which must be that of a wrong call and contain the usage.
std::string WrongCall(const std::vector<std::string>& arguments) {
    try {
        ParseCommandLine(arguments);
    } catch (const tools::ToolError& error) {
        EXPECT_EQ(tools::ExitCode::WrongCall, error.Code);
        EXPECT_THAT(
            error.what(),
            HasSubstr("\nUsage: bfi -b=BOOTSECTOR -l=LABEL -t=144|288|360|720|1200|1680 -f=IMAGE FOLDER\n"));
        return error.what();
    }
    return "(accepted)";
}

TEST(BfiCommandLine, TakesTheOptionsInAnyOrder) {
    const ImageRequest request = ParseCommandLine(
        {"Temp\\Velbooter12", "-t=288", "-f=D:\\a b.img", "-l=Velstart", "-b=files\\bootsect.bin"});
    EXPECT_EQ("files\\bootsect.bin", request.BootSectorFile);
    EXPECT_EQ("Velstart", request.Label);
    EXPECT_EQ(floppy::GeometryOfType("288"), request.Format);
    EXPECT_EQ("D:\\a b.img", request.ImageFile);
    EXPECT_EQ("Temp\\Velbooter12", request.Folder);
}

TEST(BfiCommandLine, EachPartIsNeeded) {
    const std::vector<std::string> all{"-b=b", "-l=l", "-t=144", "-f=f", "folder"};
    const char* const reasons[] = {"the boot sector (-b=) is missing", "the label (-l=) is missing",
                                   "the type (-t=) is missing", "the image (-f=) is missing",
                                   "the folder is missing"};
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::vector<std::string> some = all;
        some.erase(some.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_THAT(WrongCall(some), StartsWith(reasons[i]));
    }
    EXPECT_THAT(WrongCall({}), StartsWith("the boot sector (-b=) is missing"));
}

TEST(BfiCommandLine, NothingIsGivenTwiceOrEmpty) {
    EXPECT_THAT(WrongCall({"-b=a", "-b=b"}), StartsWith("-b= is given twice"));
    EXPECT_THAT(WrongCall({"a", "b"}), StartsWith("the folder is given twice"));
    EXPECT_THAT(WrongCall({"-f="}), StartsWith("-f= is empty"));
    EXPECT_THAT(WrongCall({""}), StartsWith("the folder is empty"));
}

TEST(BfiCommandLine, UnknownOptionsAndTypesAreNamed) {
    EXPECT_THAT(WrongCall({"-x=1"}), StartsWith("-x=1: there is no such option"));
    EXPECT_THAT(WrongCall({"-t"}), StartsWith("-t: there is no such option"));
    for (const char* type : {"160", "1440", "14", "abc"})
        EXPECT_THAT(WrongCall({"-b=b", "-l=l", std::string("-t=") + type, "-f=f", "folder"}),
                    StartsWith(std::string("-t=") + type +
                               ": the type is 144, 288, 360, 720, 1200 or 1680\nUsage: "));
}

TEST(BfiCommandLine, EachTypeIsTakenAndExplained) {
    for (const floppy::Geometry& geometry : floppy::AllGeometries())
        EXPECT_EQ(
            &geometry,
            ParseCommandLine({"-b=b", "-l=l", std::string("-t=") + geometry.Type, "-f=f", "folder"}).Format);
    EXPECT_THAT(WrongCall({}), HasSubstr("\n  -t=  144 for a 1.44 MB disk\n"
                                         "       288 for a 2.88 MB disk\n"
                                         "       360 for a 360 KB disk\n"
                                         "       720 for a 720 KB disk\n"
                                         "       1200 for a 1.2 MB disk\n"
                                         "       1680 for a 1.68 MB disk\n"
                                         "  -f=  "));
}

}  // namespace
}  // namespace tools::bfi::testing
