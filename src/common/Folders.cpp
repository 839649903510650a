#include "src/common/Folders.h"

#include <windows.h>
// imagehlp.h needs windows.h before it.
#include <imagehlp.h>

#include "src/common/Paths.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

bool MeansNothingThere(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_NO_MORE_FILES ||
           error == ERROR_INVALID_NAME || error == ERROR_DIRECTORY;
}

// A character that the code page lacks becomes a similar one or a question mark.
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

// Other reparse points, such as folders kept online, can be read like ordinary folders. Wine reports no tag.
bool IsLinkToFolder(const WIN32_FIND_DATAW& entry) {
    constexpr DWORD kFolderElsewhere = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    const DWORD tag = entry.dwReserved0;
    return (entry.dwFileAttributes & kFolderElsewhere) == kFolderElsewhere &&
           (tag == 0 || tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT);
}

// Returns the absolute path in the form that the system takes literally and at any length.
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
    // Changing the attributes of a link could change those of its target.
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    return ::DeleteFileW(file.c_str()) != 0;
}

bool EmptyAndRemove(const std::wstring& folder);

bool DeleteEntry(const std::wstring& folder, const WIN32_FIND_DATAW& entry) {
    const std::wstring path = folder + L"\\" + entry.cFileName;
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return DeleteFileEntry(path, entry);
    if (IsLinkToFolder(entry)) return ::RemoveDirectoryW(path.c_str()) != 0;
    // A folder that cannot be listed still exists.
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

constexpr DWORD kFolderCharacters = 255;

std::string FolderFromSystem(UINT (*query)(char*, UINT)) {
    std::string buffer(kFolderCharacters, '\0');
    if (query(buffer.data(), kFolderCharacters) == 0) return "";
    std::string folder = TrimAtNul(buffer);
    AddTrailingBackslash(folder);
    return folder;
}

UINT QueryWindowsFolder(char* buffer, UINT size) {
    return ::GetWindowsDirectoryA(buffer, size);
}

UINT QuerySystemFolder(char* buffer, UINT size) {
    return ::GetSystemDirectoryA(buffer, size);
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

bool FolderExists(const std::string& path) {
    if (Trim(path).empty()) return false;
    std::string folder = path;
    AddTrailingBackslash(folder);
    return AnyMatches(folder + "*.*");
}

bool CreateFolderPath(std::string& path) {
    if (!EndsWith(path, "\\")) path += "\\";
    // The system's function copies the path into a buffer of this size without checking its length.
    if (path.size() >= MAX_PATH) return false;
    return ::MakeSureDirectoryPathExists(path.c_str()) != 0;
}

void MakeFolder(const std::string& folder) {
    if (::CreateDirectoryA(folder.c_str(), nullptr) == 0) RaiseLastSystemError(folder);
}

bool DeleteTree(const std::string& folder) {
    const std::wstring path = LiteralPath(folder);
    WIN32_FIND_DATAW entry{};
    const bool isFound = static_cast<bool>(FindHandle(::FindFirstFileW(path.c_str(), &entry)));
    // A listing of a single name can return the attributes of a link's target.
    entry.dwFileAttributes = ::GetFileAttributesW(path.c_str());
    if (isFound && IsLinkToFolder(entry)) return ::RemoveDirectoryW(path.c_str()) != 0;
    return EmptyAndRemove(path);
}

bool DeleteFolderTree(const std::string& path) {
    return DeleteTree(path) && !FolderExists(path);
}

void ChangeDriveAndFolder(const std::string& folder) {
    // To the system, a drive alone means the current folder of that drive.
    const std::string path = EndsWith(folder, ":") ? folder + "\\" : folder;
    if (::SetCurrentDirectoryA(path.c_str()) == 0) RaiseLastSystemError(folder);
}

std::string GetWindowsFolder() {
    return FolderFromSystem(QueryWindowsFolder);
}

std::string GetSystemFolder() {
    return FolderFromSystem(QuerySystemFolder);
}

}  // namespace velbooter
