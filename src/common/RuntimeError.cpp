#include "src/common/RuntimeError.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <utility>

namespace velbooter {

namespace {

constexpr std::array<std::pair<int, const char*>, 14> kTexts{{
    {kOverflow, "Overflow"},
    {kOutOfMemory, "Out of memory"},
    {kBadFileName, "Bad file name or number"},
    {kFileNotFound, "File not found"},
    {kDeviceError, "Device I/O error"},
    {kFileAlreadyExists, "File already exists"},
    {kDiskFull, "Disk Full"},
    {kTooManyFiles, "Too many files"},
    {kDeviceUnavailable, "Device unavailable"},
    {kPermissionDenied, "Permission denied"},
    {kDiskNotReady, "Disk Not Ready"},
    {kDifferentDrive, "Can't rename with different drive"},
    {kPathFileAccess, "Path/File access error"},
    {kPathNotFound, "Path Not found"},
}};

constexpr std::array<std::pair<DWORD, int>, 30> kFromSystem{{
    {ERROR_FILE_NOT_FOUND, kFileNotFound},
    {ERROR_PATH_NOT_FOUND, kPathNotFound},
    {ERROR_TOO_MANY_OPEN_FILES, kTooManyFiles},
    {ERROR_ACCESS_DENIED, kPermissionDenied},
    {ERROR_NOT_ENOUGH_MEMORY, kOutOfMemory},
    {ERROR_OUTOFMEMORY, kOutOfMemory},
    {ERROR_INVALID_DRIVE, kDeviceUnavailable},
    {ERROR_CURRENT_DIRECTORY, kPathFileAccess},
    {ERROR_NOT_SAME_DEVICE, kDifferentDrive},
    {ERROR_NO_MORE_FILES, kFileNotFound},
    {ERROR_WRITE_PROTECT, kPermissionDenied},
    {ERROR_BAD_UNIT, kDeviceUnavailable},
    {ERROR_NOT_READY, kDiskNotReady},
    {ERROR_SHARING_VIOLATION, kPermissionDenied},
    {ERROR_LOCK_VIOLATION, kPermissionDenied},
    {ERROR_HANDLE_DISK_FULL, kDiskFull},
    {ERROR_BAD_NETPATH, kPathNotFound},
    {ERROR_BAD_NET_NAME, kPathNotFound},
    {ERROR_FILE_EXISTS, kFileAlreadyExists},
    {ERROR_CANNOT_MAKE, kPathFileAccess},
    {ERROR_DISK_FULL, kDiskFull},
    {ERROR_INVALID_NAME, kBadFileName},
    {ERROR_DIR_NOT_EMPTY, kPathFileAccess},
    {ERROR_BAD_PATHNAME, kPathNotFound},
    {ERROR_BUSY, kPermissionDenied},
    {ERROR_ALREADY_EXISTS, kPathFileAccess},
    {ERROR_FILENAME_EXCED_RANGE, kBadFileName},
    {ERROR_DIRECTORY, kPathNotFound},
    {ERROR_USER_MAPPED_FILE, kPermissionDenied},
    {ERROR_NO_MEDIA_IN_DRIVE, kDiskNotReady},
}};

}  // namespace

std::string RuntimeErrorText(int number) {
    const auto* found =
        std::find_if(kTexts.begin(), kTexts.end(), [number](const auto& row) { return row.first == number; });
    return found == kTexts.end() ? "Application-defined error" : found->second;
}

int RuntimeErrorFromSystem(std::uint32_t systemError) {
    const auto* found = std::find_if(kFromSystem.begin(), kFromSystem.end(),
                                     [systemError](const auto& row) { return row.first == systemError; });
    return found == kFromSystem.end() ? static_cast<int>(kDeviceError) : found->second;
}

void RaiseLastSystemError(const std::string& file) {
    throw RuntimeError(RuntimeErrorFromSystem(::GetLastError()), file);
}

RuntimeError::RuntimeError(int number, const std::string& file)
    : std::runtime_error(RuntimeErrorText(number)),
      Number(number),
      Text(RuntimeErrorText(number)),
      File(file) {}

}  // namespace velbooter
