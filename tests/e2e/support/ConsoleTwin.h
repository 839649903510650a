#pragma once
// One run of the real velbooter.com, as a command prompt or a script sees it: its command line, what it
// writes, its exit code. The velbooter.exe that it starts is watched as a ProgramUnderTest.

#include <windows.h>

#include <string>

#include "tests/e2e/support/ApplicationFolder.h"

namespace velbooter::e2e {

class ConsoleTwin {
 public:
    /// Starts velbooter.com of `folder`, which must live longer, from another current folder. Its command
    /// line is its path between double quotes and then `arguments` to the letter. It has a console without a
    /// window, and both its streams are pipes of the test.
    ConsoleTwin(const ApplicationFolder& folder, const std::string& arguments);

    /// Has a command prompt carry out `line` in the folder. The exit code is then the prompt's, which is that
    /// of the program it has run.
    static ConsoleTwin Typed(const ApplicationFolder& folder, const std::string& line);

    ~ConsoleTwin();
    ConsoleTwin(const ConsoleTwin&) = delete;
    ConsoleTwin& operator=(const ConsoleTwin&) = delete;

    /// The id of the velbooter.exe that it has started; waits for that. Throws HarnessFailure when none
    /// comes.
    DWORD Program() const;

    /// Whether it has not ended yet.
    bool IsRunning() const;

    /// Waits for the end and returns the exit code. Throws HarnessFailure after a minute.
    DWORD ExitCode() const;

    /// What it has written since the last call, once it has ended. Throws HarnessFailure when another process
    /// still holds the stream: whoever reads the output would wait for that.
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
