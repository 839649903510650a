#pragma once
// One run of the real velbooter.com, as a command prompt or a script sees it: its command line, what it
// writes, its exit code. The velbooter.exe that it starts is watched as a ProgramUnderTest.

#include <windows.h>

#include <string>

#include "tests/e2e/support/DemoFolder.h"

namespace velbooter::e2e {

class ConsoleTwin {
 public:
    /// Starts velbooter.com of `folder`, which must live longer, from another current folder. Its command
    /// line is its path in double quotes followed by `arguments` unchanged. It has a console without a
    /// window, and both its streams are pipes of the test.
    ConsoleTwin(const DemoFolder& folder, const std::string& arguments);

    /// Has a command prompt run `line` in the folder. The exit code is then the prompt's, which is that of
    /// the program that it has run.
    static ConsoleTwin Typed(const DemoFolder& folder, const std::string& line);

    ~ConsoleTwin();
    ConsoleTwin(const ConsoleTwin&) = delete;
    ConsoleTwin& operator=(const ConsoleTwin&) = delete;

    /// Waits until it has started velbooter.exe and returns that process's id. Throws HarnessFailure when it
    /// starts none.
    DWORD Program() const;

    /// Whether it still runs.
    bool IsRunning() const;

    /// Waits for its end and returns its exit code. Throws HarnessFailure after a minute.
    DWORD ExitCode() const;

    /// Returns what it has written since the last call, once it has ended. Throws HarnessFailure when
    /// another process still has the stream open: a program that reads the output would wait for that.
    std::string Output() const { return Drain(output_, "output"); }
    std::string Errors() const { return Drain(errors_, "errors"); }

 private:
    ConsoleTwin(std::string commandLine, const std::string& currentFolder);
    std::string Drain(HANDLE pipe, const std::string& what) const;

    PROCESS_INFORMATION process_{};
    HANDLE output_ = nullptr;
    HANDLE errors_ = nullptr;
};

}  // namespace velbooter::e2e
