#pragma once
// Runs another program to its end, for the tests of whole programs and for checkers that others wrote.

#include <string>
#include <vector>

namespace tools::testing {

struct ProgramResult {
    int ExitCode = -1;   ///< -1 when the program did not start or was killed
    std::string Output;  ///< what it wrote to standard output
    std::string Errors;  ///< what it wrote to standard error

    /// Both, for programs that report on either.
    std::string All() const { return Output + Errors; }
};

/// Runs `words[0]` (searched on the path) with the other words as its arguments, all UTF-8, and no input.
ProgramResult RunProgram(const std::vector<std::string>& words);

}  // namespace tools::testing
