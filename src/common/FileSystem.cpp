#include "src/common/FileSystem.h"

#include <windows.h>

#include "src/common/RuntimeError.h"

namespace velbooter {

namespace {

bool CanBeRead(const std::string& file) {
    return static_cast<bool>(FileHandle(
        ::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

bool MeansNothingThere(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_NO_MORE_FILES ||
           error == ERROR_INVALID_NAME || error == ERROR_DIRECTORY;
}

}  // namespace

std::optional<FolderEntry> FolderListing::Next() {
    WIN32_FIND_DATAA data{};
    if (search_) {
        if (::FindNextFileA(search_.Get(), &data) == 0) return std::nullopt;
    } else {
        search_ = FindHandle(::FindFirstFileA(pattern_.c_str(), &data));
        if (!search_) {
            if (MeansNothingThere(::GetLastError())) return std::nullopt;
            RaiseLastSystemError(pattern_);
        }
    }
    return FolderEntry{data.cFileName, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                       (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0};
}

void MakeWritable(const std::string& file) {
    if (::GetFileAttributesA(file.c_str()) != INVALID_FILE_ATTRIBUTES) {
        ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    }
}

void CopyFileOver(const std::string& source, const std::string& destination) {
    MakeWritable(destination);
    if (::CopyFileA(source.c_str(), destination.c_str(), FALSE) == 0) {
        const int number = RuntimeErrorFromSystem(::GetLastError());
        if (number == kDiskFull) ::DeleteFileA(destination.c_str());
        throw RuntimeError(number, CanBeRead(source) ? destination : source);
    }
}

void DeleteFileAt(const std::string& file) {
    MakeWritable(file);
    if (::DeleteFileA(file.c_str()) == 0) RaiseLastSystemError(file);
}

std::optional<FileVersion> VersionOf(const std::string& file) {
    // No access is asked for, so a file that another program holds can be looked at as well.
    const FileHandle opened(::CreateFileA(file.c_str(), 0,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!opened || ::GetFileInformationByHandle(opened.Get(), &facts) == 0) return std::nullopt;
    return FileVersion{Joined(facts.ftLastWriteTime.dwHighDateTime, facts.ftLastWriteTime.dwLowDateTime),
                       Joined(facts.ftCreationTime.dwHighDateTime, facts.ftCreationTime.dwLowDateTime),
                       Joined(facts.nFileSizeHigh, facts.nFileSizeLow),
                       Joined(facts.nFileIndexHigh, facts.nFileIndexLow)};
}

std::optional<std::uint64_t> ListedSize(const std::string& file) {
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (::GetFileAttributesExA(file.c_str(), GetFileExInfoStandard, &facts) == 0 ||
        (facts.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return std::nullopt;
    return Joined(facts.nFileSizeHigh, facts.nFileSizeLow);
}

void RenameFileTo(const std::string& file, const std::string& newName) {
    if (::GetFileAttributesA(newName.c_str()) != INVALID_FILE_ATTRIBUTES) {
        throw RuntimeError(kFileAlreadyExists, newName);
    }
    if (::MoveFileA(file.c_str(), newName.c_str()) == 0) RaiseLastSystemError(file);
}

void MakeFolder(const std::string& folder) {
    if (::CreateDirectoryA(folder.c_str(), nullptr) == 0) RaiseLastSystemError(folder);
}

void MakeEmptyFile(const std::string& file) {
    const FileHandle made(::CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!made) RaiseLastSystemError(file);
}

void ChangeDriveAndFolder(const std::string& folder) {
    if (::SetCurrentDirectoryA(folder.c_str()) == 0) RaiseLastSystemError(folder);
}

}  // namespace velbooter
