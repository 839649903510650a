#include "src/common/Files.h"

#include <windows.h>

#include <exception>
#include <limits>

#include "src/common/Folders.h"
#include "src/common/Handle.h"
#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

struct CopyWatch {
    const std::function<void()>& Call;
    std::exception_ptr Failure;
};

// No exception may cross the system's function.
DWORD CALLBACK OnCopyProgress(LARGE_INTEGER /*allBytes*/, LARGE_INTEGER /*copiedBytes*/,
                              LARGE_INTEGER /*streamBytes*/, LARGE_INTEGER /*copiedOfStream*/,
                              DWORD /*stream*/, DWORD /*reason*/, HANDLE /*source*/, HANDLE /*destination*/,
                              void* data) {
    CopyWatch& watch = *static_cast<CopyWatch*>(data);
    try {
        watch.Call();
        return PROGRESS_CONTINUE;
    } catch (...) {
        watch.Failure = std::current_exception();
        return PROGRESS_CANCEL;
    }
}

// Flushes the file to the drive, so that a power failure afterwards loses nothing. A file system that cannot
// flush is no error. Returns the system's error number, or ERROR_SUCCESS.
DWORD FlushFile(const std::string& file) {
    const FileHandle opened = OpenExistingFile(file, GENERIC_WRITE);
    if (opened && ::FlushFileBuffers(opened.Get()) != 0) return ERROR_SUCCESS;
    const DWORD error = ::GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? ERROR_SUCCESS : error;
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

}  // namespace

bool FileExists(const std::string& path) {
    std::string plain = UnquotePath(path);
    if (EndsWith(plain, "\\")) plain.pop_back();
    if (plain.find('*') == std::string::npos) return static_cast<bool>(OpenExistingFile(plain, GENERIC_READ));
    return AnyMatches(plain);
}

void DeleteIfThere(const std::string& file) {
    if (FileExists(file)) DeleteFileAt(file);
}

std::int32_t GetFileSize(const std::string& path) {
    const FileHandle file = OpenExistingFile(path, GENERIC_READ);
    LARGE_INTEGER size{};
    if (!file || ::GetFileSizeEx(file.Get(), &size) == 0) return -1;
    return size.QuadPart > std::numeric_limits<std::int32_t>::max()
               ? -1
               : static_cast<std::int32_t>(size.QuadPart);
}

std::optional<std::uint64_t> ListedSize(const std::string& file) {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (::GetFileAttributesExA(file.c_str(), GetFileExInfoStandard, &facts) == 0 ||
        (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return std::nullopt;
    return Joined(facts.nFileSizeHigh, facts.nFileSizeLow);
}

std::optional<FileStamp> StampOf(const std::string& file) {
    // No access is requested, so that a file locked by another program can be queried, too.
    const FileHandle opened = OpenExistingFile(file, 0);
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!opened || ::GetFileInformationByHandle(opened.Get(), &facts) == 0) return std::nullopt;
    return FileStamp{Joined(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
                     Joined(facts.ftCreationTime.dwHighDateTime, facts.ftCreationTime.dwLowDateTime),
                     Joined(facts.nFileSizeHigh, facts.nFileSizeLow),
                     Joined(facts.nFileIndexHigh, facts.nFileIndexLow), facts.dwVolumeSerialNumber};
}

void MakeWritable(const std::string& file) {
    if (::GetFileAttributesA(file.c_str()) != INVALID_FILE_ATTRIBUTES) {
        ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

void CopyFileOver(const std::string& source, const std::string& destination,
                  const std::function<void()>& whileCopying) {
    MakeWritable(destination);
    CopyWatch watch{whileCopying, nullptr};
    if (::CopyFileExA(source.c_str(), destination.c_str(), whileCopying ? OnCopyProgress : nullptr, &watch,
                      nullptr, 0) == 0) {
        const int number = RuntimeErrorFromSystem(::GetLastError());
        if (watch.Failure) std::rethrow_exception(watch.Failure);
        if (number == kDiskFull) ::DeleteFileA(destination.c_str());
        throw RuntimeError(number, OpenExistingFile(source, GENERIC_READ) ? destination : source);
    }
}

void CopyWholeFileOver(const std::string& source, const std::string& destination,
                       const std::function<void()>& whileCopying) {
    const std::string copy = destination + kCopySuffix;
    CopyFileOver(source, copy, whileCopying);
    // A copy takes on its source's attributes, and every file on a CD is read-only.
    MakeWritable(copy);
    DWORD error = FlushFile(copy);
    if (error == ERROR_SUCCESS) {
        MakeWritable(destination);
        if (::MoveFileExA(copy.c_str(), destination.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0) {
            return;
        }
        error = ::GetLastError();
    }
    ::DeleteFileA(copy.c_str());
    throw RuntimeError(RuntimeErrorFromSystem(error), destination);
}

void DeleteFileAt(const std::string& file) {
    MakeWritable(file);
    if (::DeleteFileA(file.c_str()) == 0) RaiseLastSystemError(file);
}

void RenameFileTo(const std::string& file, const std::string& newName) {
    if (::GetFileAttributesA(newName.c_str()) != INVALID_FILE_ATTRIBUTES) {
        throw RuntimeError(kFileAlreadyExists, newName);
    }
    if (::MoveFileA(file.c_str(), newName.c_str()) == 0) RaiseLastSystemError(file);
}

void MakeEmptyFile(const std::string& file) {
    const FileHandle made(::CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!made) RaiseLastSystemError(file);
}

}  // namespace velbooter
