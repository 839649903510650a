#include "src/common/RunReport.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

TEST(RunReporting, TheImageReachesTheOneWhoAsks) {
    const RunReport report(::GetCurrentProcessId());
    EXPECT_EQ("", report.BuiltImage());
    ReportBuiltImage("C:\\an image\\of m\xFCne.img");
    EXPECT_EQ("C:\\an image\\of m\xFCne.img", report.BuiltImage());
}

TEST(RunReporting, ARelativePathCountsFromTheCurrentFolder) {
    const ApplicationFolder folder;
    ::SetCurrentDirectoryA(folder.Path().c_str());
    const RunReport report(::GetCurrentProcessId());
    ReportBuiltImage("out\\..\\disk.img");
    EXPECT_EQ(folder.At("disk.img"), report.BuiltImage());
}

TEST(RunReporting, WhatAnotherProcessIsAskedIsNotAnswered) {
    const RunReport report(::GetCurrentProcessId() + 1);
    ReportBuiltImage("C:\\disk.img");
    EXPECT_EQ("", report.BuiltImage());
}

TEST(RunReporting, APathThatIsTooLongIsNotReported) {
    const RunReport report(::GetCurrentProcessId());
    ReportBuiltImage("C:\\" + std::string(257, 'x'));
    EXPECT_EQ("", report.BuiltImage());
    const std::string longest = "C:\\" + std::string(256, 'x');
    ReportBuiltImage(longest);
    EXPECT_EQ(longest, report.BuiltImage());
}

}  // namespace
}  // namespace velbooter::testing
