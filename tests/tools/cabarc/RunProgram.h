#pragma once
// Runs programs from tests and brings back what they print.

#include <string>

namespace tools::cabarc::test {

struct ProgramResult {
    int ExitCode = -1;
    std::string Output;
    std::string Errors;
};

/// Runs a command line of the system's shell in the working folder. It leaves the files stdout.txt and
/// stderr.txt there.
ProgramResult RunCommand(const std::string& command);

/// Runs the cabarc that was built with the tests.
ProgramResult RunCabarc(const std::string& arguments);

}  // namespace tools::cabarc::test
