#pragma once
// Processes beside the program under test: the companions, when a test starts them itself or catches them at
// work, and the tests' own programs.

#include <windows.h>

#include <string>

#include "tests/e2e/support/ApplicationFolder.h"

namespace velbooter::e2e {

/// The exit code of a process that a test has ended.
inline constexpr DWORD kKilled = 77;

/// The full path of a program that is built with the tests.
std::string TestProgram(const std::string& name);

/// Copies a program that is built with the tests to the full path `target`, over what is there.
void CopyTestProgram(const std::string& name, const std::string& target);

/// Holds a companion of an application folder up: when the program runs it, it waits until it is released and
/// then does its work.
class HeldTool {
 public:
    /// Takes the place of the companion `name` ("cabarc", "bfi"). `folder` must live longer.
    HeldTool(const ApplicationFolder& folder, const std::string& name);

    /// Lets a waiting companion go on.
    ~HeldTool() { Release(); }
    HeldTool(const HeldTool&) = delete;
    HeldTool& operator=(const HeldTool&) = delete;

    /// Whether the program has run the companion.
    bool IsAtWork() const { return folder_.Exists(name_ + ".held"); }

    /// Lets it go on, now and at every later run.
    void Release() const { folder_.Write(name_ + ".go", ""); }

 private:
    const ApplicationFolder& folder_;
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

    /// Ends the process from outside and waits until it is gone. Returns whether it had not ended by itself.
    bool Kill();

    bool IsRunning() const { return ::WaitForSingleObject(process_, 0) == WAIT_TIMEOUT; }

    /// When it was started, in units of 100 nanoseconds.
    ULONGLONG Start() const { return StartOf(process_); }

 private:
    HANDLE process_ = nullptr;
};

/// Waits until `parent`, which may have ended since, has started the program `name`, and returns its process
/// id. Throws HarnessFailure when it is not seen within a minute.
DWORD WaitForChild(DWORD parent, const std::string& name);

/// Waits until `parent` has started the program `name`, ends it from outside and waits until it is gone.
/// Returns whether that came before its own end. Throws HarnessFailure when it is not seen within a
/// minute.
bool KillChild(DWORD parent, const std::string& name);

/// Sees to it that no program is left that the process `parent`, which was started at `parentStart`, has
/// started: it gets a second to end by itself. `parent` may itself have ended. The system gives the ids of
/// ended processes to new ones, and an older process of that parent's id is left alone: it may be one of the
/// system's, without which no program can open a window or start another.
void EndChildrenOf(DWORD parent, ULONGLONG parentStart);

}  // namespace velbooter::e2e
