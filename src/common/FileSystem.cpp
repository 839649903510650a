#include "src/common/FileSystem.h"

#include <windows.h>

#include <exception>

#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

bool CanBeRead(const std::string& file) {
    return static_cast<bool>(FileHandle(
        ::CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)));
}

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

// Has the contents written to the drive itself, so that the power may go behind it, where the file system
// knows how. Returns the system's number of the error, or ERROR_SUCCESS.
DWORD FlushFile(const std::string& file) {
    const FileHandle opened(::CreateFileA(file.c_str(), GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (opened && ::FlushFileBuffers(opened.Get()) != 0) return ERROR_SUCCESS;
    const DWORD error = ::GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED ? ERROR_SUCCESS : error;
}

std::uint64_t Joined(DWORD high, DWORD low) {
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

bool MeansNothingThere(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_NO_MORE_FILES ||
           error == ERROR_INVALID_NAME || error == ERROR_DIRECTORY;
}

// What the code page cannot hold becomes a character that looks like it, or a question mark.
std::string LookOf(const std::wstring& text) {
    const auto length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string look(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, look.data(), size, nullptr, nullptr);
    return look;
}

bool IsDots(const wchar_t* name) {
    return ::lstrcmpW(name, L".") == 0 || ::lstrcmpW(name, L"..") == 0;
}

// Other reparse points, files kept online for instance, are ordinary folders to a reader. Wine gives no tag.
bool IsLinkToFolder(const WIN32_FIND_DATAW& entry) {
    constexpr DWORD kFolderElsewhere = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    const DWORD tag = entry.dwReserved0;
    return (entry.dwFileAttributes & kFolderElsewhere) == kFolderElsewhere &&
           (tag == 0 || tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT);
}

// The absolute path in the form that the system takes to the letter and at any length.
std::wstring LiteralPath(const std::string& path) {
    const std::wstring given = WideFromAnsi(path);
    std::wstring full(::GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    while (full.size() > 3 && full.back() == L'\\') full.pop_back();
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

bool IsThere(const std::wstring& path) {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool RemoveFolder(const std::wstring& folder) {
    ::SetFileAttributesW(folder.c_str(), FILE_ATTRIBUTE_NORMAL);
    return ::RemoveDirectoryW(folder.c_str()) != 0;
}

bool DeleteFileEntry(const std::wstring& file, const WIN32_FIND_DATAW& entry) {
    // The attributes of a link would be those of what it leads to.
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    return ::DeleteFileW(file.c_str()) != 0;
}

bool EmptyAndRemove(const std::wstring& folder);

bool DeleteEntry(const std::wstring& folder, const WIN32_FIND_DATAW& entry) {
    const std::wstring path = folder + L"\\" + entry.cFileName;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return DeleteFileEntry(path, entry);
    if (IsLinkToFolder(entry)) return ::RemoveDirectoryW(path.c_str()) != 0;
    // A folder that cannot be listed is still there.
    return EmptyAndRemove(path) && !IsThere(path);
}

bool EmptyAndRemove(const std::wstring& folder) {
    WIN32_FIND_DATAW entry{};
    FindHandle search(::FindFirstFileW((folder + L"\\*").c_str(), &entry));
    if (!search) return true;
    do {
        if (!IsDots(entry.cFileName) && !DeleteEntry(folder, entry)) return false;
    } while (::FindNextFileW(search.Get(), &entry) != 0);
    if (::GetLastError() != ERROR_NO_MORE_FILES) return false;
    search.Reset();  // it keeps the folder open
    return RemoveFolder(folder);
}

}  // namespace

std::optional<FolderEntry> FolderListing::Next() {
    WIN32_FIND_DATAW data{};
    size_t steps = 1;
    if (!search_) {
        search_ = FindHandle(::FindFirstFileW(WideFromAnsi(pattern_).c_str(), &data));
        if (!search_) {
            if (MeansNothingThere(::GetLastError())) return std::nullopt;
            RaiseLastSystemError(pattern_);
        }
        steps = given_;
    }
    for (; steps > 0; --steps) {
        if (::FindNextFileW(search_.Get(), &data) != 0) continue;
        const DWORD error = ::GetLastError();
        if (error == ERROR_NO_MORE_FILES) return std::nullopt;
        search_.Reset();
        throw RuntimeError(RuntimeErrorFromSystem(error), pattern_);
    }
    const std::string name = LookOf(data.cFileName);
    if (WideFromAnsi(name) != data.cFileName) {
        search_.Reset();
        throw RuntimeError(kBadFileName, pattern_.substr(0, FindLastOf(pattern_, "\\/") + 1) + name);
    }
    ++given_;
    return FolderEntry{name, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
}

void FolderListing::Restart() {
    search_.Reset();
    given_ = 0;
}

bool AnyMatches(const std::string& pattern) {
    WIN32_FIND_DATAA ignored{};
    return static_cast<bool>(FindHandle(::FindFirstFileA(pattern.c_str(), &ignored)));
}

bool DeleteTree(const std::string& folder) {
    const std::wstring path = LiteralPath(folder);
    WIN32_FIND_DATAW entry{};
    const bool isFound = static_cast<bool>(FindHandle(::FindFirstFileW(path.c_str(), &entry)));
    // A listing of one name can tell the attributes of what a link leads to.
    entry.dwFileAttributes = ::GetFileAttributesW(path.c_str());
    if (isFound && IsLinkToFolder(entry)) return ::RemoveDirectoryW(path.c_str()) != 0;
    return EmptyAndRemove(path);
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
        throw RuntimeError(number, CanBeRead(source) ? destination : source);
    }
}

void CopyWholeFileOver(const std::string& source, const std::string& destination,
                       const std::function<void()>& whileCopying) {
    const std::string copy = destination + kCopySuffix;
    CopyFileOver(source, copy, whileCopying);
    // A copy has the attributes of its source, and those of a CD are all read-only.
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
                       Joined(facts.nFileIndexHigh, facts.nFileIndexLow), facts.dwVolumeSerialNumber};
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
    // To the system a drive alone is the current folder of that drive.
    const std::string path = EndsWith(folder, ":") ? folder + "\\" : folder;
    if (::SetCurrentDirectoryA(path.c_str()) == 0) RaiseLastSystemError(folder);
}

}  // namespace velbooter
