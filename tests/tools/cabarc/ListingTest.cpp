#include "tools/cabarc/Listing.h"

#include <gtest/gtest.h>

#include "tools/shared/HostFiles.h"

namespace tools::cabarc::testing {
namespace {

CabinetDirectory ListedSample() {
    CabinetDirectory directory;
    directory.CabinetSize = 4321;
    directory.Folders = {{100, 1, 0x1503}, {200, 1, 0x0001}, {300, 1, 0x1503}};
    directory.Members = {{"net.bat", 1234, 0, 0, PackDosTime(2001, 2, 3, 4, 5, 6), kArchive},
                         {"bin\\IO.SYS", 4000000000U, 0, 1, PackDosTime(1999, 12, 31, 23, 59, 58),
                          kReadOnly | kHidden | kSystem},
                         {"evil\x1B[2J\n\xC2\x9B"
                          "31m\xE2\x80\xAE",
                          0, 0, 2, DosTime{}, kArchive | kNameIsUtf8}};
    return directory;
}

TEST(Listing, ShowsEveryMemberInATable) {
    EXPECT_EQ(
        "a.cab: 4321 bytes, 3 folders, LZX:21, MSZIP\n"
        "\n"
        "      Size  Date       Time      Attr  Name\n"
        "      1234  2001-02-03 04:05:06  ---a  net.bat\n"
        "4000000000  1999-12-31 23:59:58  rhs-  bin\\IO.SYS\n"
        "         0  1980-01-01 00:00:00  ---a  evil?[2J?\\u009B31m\\u202E\n"
        "4000001234  in 3 files\n",
        ListingOf(ListedSample(), "a.cab", {}));
}

TEST(Listing, ShowsOnlyWhatMatches) {
    const std::string patterns[] = {"io.*"};
    EXPECT_EQ(
        "a.cab: 4321 bytes, 3 folders, LZX:21, MSZIP\n"
        "\n"
        "      Size  Date       Time      Attr  Name\n"
        "4000000000  1999-12-31 23:59:58  rhs-  bin\\IO.SYS\n"
        "4000000000  in 1 file\n",
        ListingOf(ListedSample(), "a.cab", patterns));
}

}  // namespace
}  // namespace tools::cabarc::testing
