#pragma once
// Processes other than the program under test: the companions, when a test starts them itself or ends them
// while they work, and the tests' own programs.

#include <windows.h>

#include <string>

#include "tests/e2e/support/DemoFolder.h"

namespace velbooter::e2e {

/// The exit code of a process that a test has ended.
inline constexpr DWORD kKilled = 77;

/// The full path of a program that is built with the tests.
std::string TestProgram(const std::string& name);

/// Copies a program that is built with the tests to the full path `target`, over what is there.
void CopyTestProgram(const std::string& name, const std::string& target);

/// Holds up a companion of an application folder: when the program runs it, it waits until it is released
/// and then does its work.
class HeldTool {
 public:
    /// Takes the place of the companion `name` ("cabarc", "bfi"). `folder` must live longer.
    HeldTool(const DemoFolder& folder, const std::string& name);

    /// Releases a waiting companion.
    ~HeldTool() { Release(); }
    HeldTool(const HeldTool&) = delete;
    HeldTool& operator=(const HeldTool&) = delete;

    /// Whether the program has run the companion.
    bool IsAtWork() const { return folder_.Exists(name_ + ".held"); }

    /// Releases it, now and at every later run.
    void Release() const { folder_.Write(name_ + ".go", ""); }

 private:
    const DemoFolder& folder_;
    std::string name_;
};

/// Returns when a process was started, in units of 100 nanoseconds.
ULONGLONG StartOf(HANDLE process);

/// A hidden process that the test has started.
class StartedTool {
 public:
    /// Starts `commandLine` in `folder`. Throws HarnessFailure when it does not start.
    StartedTool(const std::string& commandLine, const std::string& folder);
    ~StartedTool();
    StartedTool(const StartedTool&) = delete;
    StartedTool& operator=(const StartedTool&) = delete;

    /// Waits for the end and returns the exit code. Throws HarnessFailure when none comes.
    DWORD ExitCode();

    /// Ends the process from outside and waits until it is gone. Returns whether it was still running.
    bool Kill();

    bool IsRunning() const { return ::WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

    /// When it was started, in units of 100 nanoseconds.
    ULONGLONG Start() const { return StartOf(process_); }

 private:
    HANDLE process_ = nullptr;
};

/// Waits until `parent`, which may have ended since, has started the program `name`, and returns that
/// program's process id. Throws HarnessFailure when it does not appear within a minute.
DWORD WaitForChild(DWORD parent, const std::string& name);

/// Waits until `parent` has started the program `name`, ends that program from outside and waits until it is
/// gone. Returns whether it was still running. Throws HarnessFailure when it does not appear within a
/// minute.
bool KillChild(DWORD parent, const std::string& name);

/// Ends the programs that the process `parent`, started at `parentStart`, has started and that do not end by
/// themselves within a second. `parent` may itself have ended. The system gives the ids of ended processes
/// to new ones, so a process whose parent has this id but which is older is left alone: it may belong to the
/// system, and without it no program could open a window or start another.
void EndChildrenOf(DWORD parent, ULONGLONG parentStart);

}  // namespace velbooter::e2e
