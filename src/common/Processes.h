#pragma once
// Processes: the running program's own file and command line, other programs, what the shell opens, and other
// programs' windows. None speaks to the user.

#include <cstdint>
#include <functional>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// Return the running program's own file, and its folder without a trailing backslash. The path is cut when
/// it is longer than the system's 259 characters.
std::string GetProgramFile();
std::string GetProgramFolder();

/// Makes the system load libraries from its own folder alone: the program may lie among downloads, any of
/// which could be one. Changes nothing on a Windows 7 without its updates.
void LoadSystemLibrariesAlone();

/// Returns everything of `wholeCommandLine` that follows the program's own name, the separating blank
/// included, to the letter; velbooter.com hands it on. The name ends, as the system reads it, at the first
/// blank or tab that is not between double quotes.
std::string TextAfterName(const std::string& wholeCommandLine);

/// Returns the text of TextAfterName without the one blank or tab that separates it.
std::string ArgumentsOf(const std::string& wholeCommandLine);

/// Returns whether `text`, of TextAfterName, asks for nothing: blanks, some of which a command prompt adds
/// by itself, are no arguments.
bool IsWithoutArguments(const std::string& text);

/// Starts `commandLine` exactly as it stands, in the caller's current folder, inheriting handles; `hidden`
/// starts its window hidden. Returns the process's handle, empty when the start failed. The thread's handle
/// is not closed, a small leak per call that is accepted.
KernelHandle StartProcess(const std::string& commandLine, bool hidden);

/// Starts `commandLine` and waits for its end, or, with `waitForInputIdle`, until it waits for input.
/// `timeoutMs` is in milliseconds; below 1 there is no limit. `whileWaiting` is called again and again during
/// the wait, so that windows keep painting. Returns true when the wait was fulfilled, false after the
/// time-out or when the start failed. The exit code is not looked at: callers check the files that the tool
/// should have made.
bool RunAndWait(const std::string& commandLine, std::int32_t timeoutMs, bool waitForInputIdle, bool hidden,
                const std::function<void()>& whileWaiting = {});

/// Opens a document or an address with its default program (working folder "C:\", normal window). Returns the
/// system's result: above 32 means success.
std::int32_t OpenWithShell(const std::string& document);

/// Returns whether a top-level window of this class and title exists.
bool IsWindowPresent(const std::string& windowClass, const std::string& title);

}  // namespace velbooter
