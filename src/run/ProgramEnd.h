#pragma once
// Ending the program "at once". The exception travels to the entry point, which alone catches it, so that
// nothing on the way cleans up, and so that a test can see the program end.

namespace velbooter {

/// What the process returns to whoever started it. Scripts rely on the numbers; they never change.
enum class ExitCode : int {
    Built = 0,            ///< the build reached its end (or, without a command line, nothing went wrong)
    Canceled = 1,         ///< a step failed or was cancelled; the working files are cleaned up
    Refused = 2,          ///< the command line was refused, or its summary was answered with Cancel
    UnknownDisk = 3,      ///< the catalogue has no disk of that name
    DosFilesMissing = 4,  ///< the DOS system files are not there and could not be imported
    AlreadyRunning = 5,   ///< another instance of the program runs in this folder
    InternalError = 6,    ///< an error that no step handles; a message named it
    NoImage = 7,          ///< the build reached its end, but the image tool has left no new image
};

/// Thrown to end the program with `Code`. Deliberately not a std::exception: no handler but the entry's takes
/// it.
struct ProgramEnd {
    ExitCode Code;
};

}  // namespace velbooter
