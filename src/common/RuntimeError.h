#pragma once
// The one error type of file operations. It carries a number and the text that messages show (53 "File not
// found", 61 "Disk Full", ...), so that a full floppy is reported in the same words whichever routine detects
// it.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace velbooter {

/// Numbers of the errors that the program itself names or raises. Messages show them, so they never change.
enum RuntimeErrorNumber : int {
    kOverflow = 6,
    kOutOfMemory = 7,
    kBadFileName = 52,
    kFileNotFound = 53,
    kDeviceError = 57,
    kFileAlreadyExists = 58,
    kDiskFull = 61,
    kTooManyFiles = 67,
    kDeviceUnavailable = 68,
    kPermissionDenied = 70,
    kDiskNotReady = 71,
    kDifferentDrive = 74,
    kPathFileAccess = 75,
    kPathNotFound = 76,
};

/// A failed operation: its number, the number's text, and the file it was about ("" when there is none).
class RuntimeError : public std::runtime_error {
 public:
    /// Creates the error `number` with the text that RuntimeErrorText returns.
    explicit RuntimeError(int number, const std::string& file = "");

    int Number;
    std::string Text;
    std::string File;
};

/// Returns the text of an error number, for example "Disk Full" for 61; "Application-defined error" for a
/// number that is not in the table.
std::string RuntimeErrorText(int number);

/// Returns the error number that stands for a result of GetLastError. A code that is not in the table is a
/// device error (57).
int RuntimeErrorFromSystem(std::uint32_t systemError);

/// Raises the RuntimeError for the calling thread's last system error (GetLastError), about `file`. To be
/// called before anything else that may set that error.
[[noreturn]] void RaiseLastSystemError(const std::string& file);

}  // namespace velbooter
