#pragma once
// Where a test finds what the build has created for it: where the build left it, on the machine of the
// build, or next to the test program, where the tests were unpacked.

#include <filesystem>
#include <string>

namespace tools::testing {

/// Returns whether the tests were unpacked from their ZIP: run-tests.bat sets a variable for the programs
/// that it runs.
bool TestsTravel();

/// Returns the full path of a file or folder that a test needs: `packed`, a path with "/" relative to the
/// folder of the running test program, when that exists or when the tests were unpacked, else `built`, its
/// path on the machine of the build. Whether it exists is not checked.
std::filesystem::path BuiltFile(const std::string& packed, const std::string& built);

/// Copies a file over an existing one. Throws filesystem_error. The function of the standard library refuses
/// that on Windows when both are on one drive, because it takes them for the same file.
void CopyOver(const std::filesystem::path& source, const std::filesystem::path& target);

}  // namespace tools::testing
