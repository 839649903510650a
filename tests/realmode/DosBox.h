#pragma once
// Runs commands in DOSBox, an emulated PC with a DOS of its own, without a window.

#include <filesystem>
#include <string>
#include <vector>

namespace realmode::testing {

/// Starts DOSBox with the folder "c" of `folder` as its drive C: and the current one, types the commands and
/// ends it. What a command leaves in a file on C: is in that folder afterwards. `settings` are lines of
/// DOSBox's configuration. A DOSBox that does not end within `seconds` is a failure of the test.
void RunInDosBox(const std::filesystem::path& folder, const std::vector<std::string>& commands,
                 const std::string& settings = "", int seconds = 60);

}  // namespace realmode::testing
