#pragma once
// Runs commands in DOSBox, an emulated PC with a DOS of its own, without a window.

#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

namespace realmode::testing {

/// Starts DOSBox with the folder "c" of `files` as its drive C: and the current one, types the commands and
/// ends it. What a command leaves in a file on C: is in that folder afterwards. A DOSBox that does not end
/// within a minute is a failure of the test.
void RunInDosBox(const tools::testing::TestFolder& files, const std::vector<std::string>& commands);

}  // namespace realmode::testing
