#pragma once
// Commands of the host's shell, for tools whose calls need its redirections and lists.

#include <string>

#include "tests/support/RunProgram.h"

namespace realmode::unpack::testing {

/// Runs `line` with the shell in the working folder.
inline tools::testing::ProgramResult RunShell(const std::string& line) {
    return tools::testing::RunProgram({"sh", "-c", line});
}

}  // namespace realmode::unpack::testing
