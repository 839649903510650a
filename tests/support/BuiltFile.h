#pragma once
// Where a test finds what the build has made for it: on the machine of the build where the build left it, and
// wherever the tests were unpacked beside the test program.

#include <filesystem>
#include <string>

namespace tools::testing {

/// Returns whether the tests were unpacked from their ZIP: run-tests.bat says so to the programs that it
/// runs.
bool TestsTravel();

/// Returns the full path of a file or folder that a test needs: `packed`, a path with "/" relative to the
/// folder of the running test program, when there is such a thing or when the tests travel, else `built`, its
/// path on the machine of the build. Whether it exists is for the caller to see.
std::filesystem::path BuiltFile(const std::string& packed, const std::string& built);

/// Copies a file, in the place of one that is there already. Throws filesystem_error. The standard library
/// refuses that on Windows when both lie on one drive: it takes them for the same file.
void CopyOver(const std::filesystem::path& source, const std::filesystem::path& target);

}  // namespace tools::testing
