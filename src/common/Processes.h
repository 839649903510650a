#pragma once
// Processes: the running program's own file and command line, other programs, what the shell opens, and other
// programs' windows. Nothing here shows a message.

#include <cstdint>
#include <functional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// Return the running program's own file, and its folder without a trailing backslash. The path is truncated
/// when it is longer than 259 characters, the system's limit.
std::string GetProgramFile();
std::string GetProgramFolder();

/// Makes the process load libraries from the system's folder only: in a download folder, a file next to the
/// program could pose as one. Has no effect on a Windows 7 without updates.
void LoadSystemLibrariesAlone();

/// Returns everything in `wholeCommandLine` after the program's name, unchanged and with the separating space
/// or tab; velbooter.com passes it on. As for the system, the name ends at the first space or tab outside
/// double quotes.
std::string TextAfterName(const std::string& wholeCommandLine);

/// Returns the text of TextAfterName without its first character, the separating space or tab.
std::string ArgumentsOf(const std::string& wholeCommandLine);

/// Returns whether `text`, a result of TextAfterName, contains no arguments. It may contain spaces; a command
/// prompt adds some by itself.
bool IsWithoutArguments(const std::string& text);

/// Starts `commandLine` exactly as it stands, in the caller's current folder, inheriting handles; `hidden`
/// starts its window hidden. Returns the process's handle, empty when the start failed. The thread's handle
/// is not closed, an accepted small leak per call.
KernelHandle StartProcess(const std::string& commandLine, bool hidden);

/// Starts `commandLine` and waits for its end, or, with `waitForInputIdle`, until it waits for input.
/// `timeoutMs` is in milliseconds; below 1 there is no limit. `whileWaiting` is called repeatedly during the
/// wait, so that windows keep painting. Returns true when the process reached that state, false after the
/// time-out or a failed start. The exit code is ignored: callers check the files that the tool should have
/// created.
bool RunAndWait(const std::string& commandLine, std::int32_t timeoutMs, bool waitForInputIdle, bool hidden,
                const std::function<void()>& whileWaiting = {});

/// Opens a document or an address with its default program (working folder "C:\", normal window). Returns the
/// system's result: above 32 means success.
std::int32_t OpenWithShell(const std::string& document);

/// Returns whether a top-level window of this class and title exists.
bool IsWindowPresent(const std::string& windowClass, const std::string& title);

}  // namespace velbooter
