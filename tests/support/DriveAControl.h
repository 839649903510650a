#pragma once
// Changes the file system of drive A: while with-drive-a.sh runs a test.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/Patience.h"

namespace velbooter {

/// Gives the file system of drive A: other options, those of a tmpfs. Fails the test when that does not
/// work.
inline void RemountDriveA(const std::string& options) {
    const char* control = std::getenv("VELBOOTER_DRIVE_A_CONTROL");
    ASSERT_NE(nullptr, control) << "not run by with-drive-a.sh";
    const std::string folder = std::string("Z:") + control;
    std::ofstream(folder + "/new") << options;
    std::filesystem::rename(folder + "/new", folder + "/request");
    EXPECT_TRUE(Eventually([&] { return !std::filesystem::exists(folder + "/request"); })) << "not remounted";
}

}  // namespace velbooter
