#include "src/common/RuntimeError.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace velbooter::testing {
namespace {

TEST(RuntimeErrors, TextsOfTheFileErrors) {
    struct Case {
        int number;
        const char* text;
    };
    const Case cases[] = {
        {6, "Overflow"},
        {7, "Out of memory"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {57, "Device I/O error"},
        {58, "File already exists"},
        {61, "Disk Full"},
        {67, "Too many files"},
        {68, "Device unavailable"},
        {70, "Permission denied"},
        {71, "Disk Not Ready"},
        {74, "Can't rename with different drive"},
        {75, "Path/File access error"},
        {76, "Path Not found"},
        {9999, "Application-defined error"},
    };
    for (const Case& c : cases) EXPECT_EQ(RuntimeErrorText(c.number), c.text) << c.number;
}

TEST(RuntimeErrors, SystemErrorsMapToTheirNumbers) {
    struct Case {
        DWORD system;
        int number;
    };
    const Case cases[] = {
        {ERROR_FILE_NOT_FOUND, kFileNotFound},
        {ERROR_PATH_NOT_FOUND, kPathNotFound},
        {ERROR_DISK_FULL, kDiskFull},
        {ERROR_HANDLE_DISK_FULL, kDiskFull},
        {ERROR_NOT_READY, kDiskNotReady},
        {ERROR_SHARING_VIOLATION, kPermissionDenied},
        {ERROR_LOCK_VIOLATION, kPermissionDenied},
        {ERROR_WRITE_PROTECT, kPermissionDenied},
        {ERROR_NOT_ENOUGH_MEMORY, kOutOfMemory},
        {ERROR_TOO_MANY_OPEN_FILES, kTooManyFiles},
        {ERROR_NOT_SAME_DEVICE, kDifferentDrive},
        {ERROR_FILE_EXISTS, kFileAlreadyExists},
        {ERROR_ALREADY_EXISTS, kPathFileAccess},
        {ERROR_INVALID_NAME, kBadFileName},
        {ERROR_INVALID_FUNCTION + 60000, kDeviceError},
    };
    for (const Case& c : cases) EXPECT_EQ(RuntimeErrorFromSystem(c.system), c.number) << c.system;
}

TEST(RuntimeErrors, AccessDeniedIsAnErrorOfPermissionOrAccess) {
    const int number = RuntimeErrorFromSystem(ERROR_ACCESS_DENIED);
    EXPECT_TRUE(number == kPermissionDenied || number == kPathFileAccess) << number;
}

TEST(RuntimeErrors, AnErrorCarriesNumberTextAndFile) {
    const RuntimeError error(kDiskFull, "A:\\x.cab");
    EXPECT_EQ(61, error.Number);
    EXPECT_EQ("Disk Full", error.Text);
    EXPECT_EQ("A:\\x.cab", error.File);
    EXPECT_EQ("", RuntimeError(kOverflow).File);
}

TEST(RuntimeErrors, TheLastSystemErrorIsRaised) {
    SetLastError(ERROR_HANDLE_DISK_FULL);
    try {
        RaiseLastSystemError("x.cab");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kDiskFull, error.Number);
        EXPECT_EQ("x.cab", error.File);
    }
}

}  // namespace
}  // namespace velbooter::testing
