#pragma once
// Processes beside the program under test: the companions, when a test starts them itself or catches them at
// work, and the tests' own programs.

#include <windows.h>

#include <string>

namespace velbooter::e2e {

/// The full path of a program that is built with the tests.
std::string TestProgram(const std::string& name);

/// A hidden process that the test has started.
class StartedTool {
 public:
    /// Starts `commandLine` in `folder`. Throws HarnessFailure when it does not start.
    StartedTool(const std::string& commandLine, const std::string& folder);
    ~StartedTool();
    StartedTool(const StartedTool&) = delete;
    StartedTool& operator=(const StartedTool&) = delete;

    /// Waits for the end and returns the exit code. Throws HarnessFailure after a minute.
    DWORD ExitCode();

    /// Ends the process from outside and waits until it is gone. Returns whether it had not ended by itself.
    bool Kill();

 private:
    HANDLE process_ = nullptr;
};

/// Waits until `parent` has started the program `name`, ends it from outside and waits until it is gone.
/// Returns whether that came before its own end. Throws HarnessFailure when it is not seen within ten
/// seconds.
bool KillChild(DWORD parent, const std::string& name);

}  // namespace velbooter::e2e
