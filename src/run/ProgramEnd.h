#pragma once
// The way to end the program from anywhere. Only the entry point catches the exception: no handler on the way
// cleans up, and a test can observe the end.

namespace velbooter {

/// The exit code of the process. Scripts rely on the numbers; they never change.
enum class ExitCode : int {
    Built = 0,            ///< the build was completed (or, without a command line, nothing went wrong)
    Canceled = 1,         ///< a step failed or was cancelled; the working files are cleaned up
    Refused = 2,          ///< the command line was rejected, or its summary was answered with Cancel
    UnknownDisk = 3,      ///< the catalogue has no disk of that name
    DosFilesMissing = 4,  ///< the DOS system files are not there and could not be imported
    AlreadyRunning = 5,   ///< another instance of the program runs in this folder
    InternalError = 6,    ///< an error that no step handles; a message named it
    NoImage = 7,          ///< the build was completed, but the image tool left no new image
};

/// Thrown to end the program with `Code`. Not a std::exception, so that error handlers let it pass.
struct ProgramEnd {
    ExitCode Code;
};

}  // namespace velbooter
