#pragma once
// Runs commands in DOSBox, an emulated PC with a DOS of its own, without a window.

#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

namespace realmode::testing {

/// Starts DOSBox with the folder "c" of `files` as its drive C:, which is the current one, runs the commands
/// and ends it. What a command writes to a file on C: is in that folder afterwards. The test fails when
/// DOSBox does not end within a minute.
void RunInDosBox(const tools::testing::TestFolder& files, const std::vector<std::string>& commands);

}  // namespace realmode::testing
