#pragma once
// Runs another program to its end, as the tests of whole programs and the outside checkers need it.

#include <string>
#include <vector>

namespace tools::testing {

struct ProgramResult {
    int ExitCode = -1;   ///< -1 when the program did not start or was killed
    std::string Output;  ///< what it wrote to standard output
    std::string Errors;  ///< what it wrote to standard error

    /// Both, for what says things on either.
    std::string All() const { return Output + Errors; }
};

/// Runs `words[0]` (searched on the path) with the other words as its arguments, all UTF-8, and no input.
ProgramResult RunProgram(const std::vector<std::string>& words);

}  // namespace tools::testing
