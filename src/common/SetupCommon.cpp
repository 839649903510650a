#include "src/common/SetupCommon.h"

#include <windows.h>
// Behind windows.h, on which it depends.
#include <imagehlp.h>

#include <limits>

#include "src/common/FileSystem.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

constexpr DWORD kFolderCharacters = 255;
constexpr DWORD kShortPathCharacters = 300;

constexpr const char* kSeparators = "\\/";

bool EndsInSeparator(const std::string& path) {
    return EndsWith(path, "\\") || EndsWith(path, "/");
}

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

FileHandle OpenForReading(const std::string& path) {
    return FileHandle(::CreateFileA(path.c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::int32_t MultiplyWithOverflow(std::uint64_t left, std::uint64_t right, const std::string& drive) {
    const std::uint64_t limit = std::numeric_limits<std::int32_t>::max();
    if (left > limit || right > limit || left * right > limit) throw RuntimeError(kOverflow, drive);
    return static_cast<std::int32_t>(left * right);
}

HKEY RootKey(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RegistryRoot::CurrentUser:
            return HKEY_CURRENT_USER;
        case RegistryRoot::Users:
            return HKEY_USERS;
        case RegistryRoot::LocalMachine:
            break;
    }
    return HKEY_LOCAL_MACHINE;
}

}  // namespace

void AddTrailingBackslash(std::string& path) {
    if (EndsInSeparator(Trim(path))) return;
    path = TrimRight(path) + "\\";
}

std::string TrimAtNul(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

bool IsPathSeparator(const std::string& character) {
    return character == "\\" || character == "/";
}

bool SplitPath(const std::string& path, std::string& folder, std::string& file) {
    const size_t last = FindLastOf(path, kSeparators);
    if (last != std::string::npos && last + 1 == path.size()) return false;
    if (last == std::string::npos) {
        std::string current(MAX_PATH, '\0');
        current.resize(::GetCurrentDirectoryA(MAX_PATH, current.data()));
        folder = current;
        file = path;
        return false;
    }
    folder = path.substr(0, last);
    file = path.substr(last + 1);
    return true;
}

std::string GetFolderPart(const std::string& path) {
    std::string folder;
    std::string file;
    SplitPath(path, folder, file);
    return folder;
}

std::string QuotePath(const std::string& text, bool force, bool trim) {
    const std::string inner = trim ? Trim(text) : text;
    const bool quotedAlready = !inner.empty() && inner.front() == '"' && inner.back() == '"';
    return quotedAlready && !force ? inner : "\"" + inner + "\"";
}

std::string UnquotePath(const std::string& text) {
    const std::string trimmed = Trim(text);
    const bool quoted = trimmed.size() >= 2 && trimmed.front() == '"' && trimmed.back() == '"';
    return quoted ? trimmed.substr(1, trimmed.size() - 2) : trimmed;
}

std::string GetShortPath(const std::string& path) {
    std::string buffer(kShortPathCharacters, '\0');
    const DWORD length = ::GetShortPathNameA(path.c_str(), buffer.data(), kShortPathCharacters);
    return length == 0 || length >= kShortPathCharacters ? path : TrimAtNul(buffer);
}

std::string GetWindowsFolder() {
    return FolderFromSystem(QueryWindowsFolder);
}

std::string GetSystemFolder() {
    return FolderFromSystem(QuerySystemFolder);
}

std::string GetProgramFile() {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    return path;
}

std::string GetProgramFolder() {
    return GetFolderPart(GetProgramFile());
}

void LoadSystemLibrariesAlone() {
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto setDirectories = reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (setDirectories != nullptr) setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

bool FileExists(const std::string& path) {
    std::string plain = UnquotePath(path);
    if (EndsWith(plain, "\\")) plain.pop_back();
    if (plain.find('*') == std::string::npos) return static_cast<bool>(OpenForReading(plain));
    return AnyMatches(plain);
}

void DeleteIfThere(const std::string& file) {
    if (FileExists(file)) DeleteFileAt(file);
}

bool FolderExists(const std::string& path) {
    if (Trim(path).empty()) return false;
    std::string folder = path;
    AddTrailingBackslash(folder);
    return AnyMatches(folder + "*.*");
}

bool CreateFolderPath(std::string& path) {
    if (!EndsWith(path, "\\")) path += "\\";
    // The system's function copies the path into a buffer of this size without looking at its length.
    if (path.size() >= MAX_PATH) return false;
    return ::MakeSureDirectoryPathExists(path.c_str()) != 0;
}

bool DeleteFolderTree(const std::string& path) {
    return DeleteTree(path) && !FolderExists(path);
}

std::int32_t GetFileSize(const std::string& path) {
    const FileHandle file = OpenForReading(path);
    LARGE_INTEGER size{};
    if (!file || ::GetFileSizeEx(file.Get(), &size) == 0) return -1;
    return size.QuadPart > std::numeric_limits<std::int32_t>::max()
               ? -1
               : static_cast<std::int32_t>(size.QuadPart);
}

double GetDriveFreeSpace(const std::string& path) {
    const std::string root = path.substr(0, 1) + ":\\";
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD allClusters = 0;
    if (::GetDiskFreeSpaceA(root.c_str(), &sectorsPerCluster, &bytesPerSector, &freeClusters, &allClusters) ==
        0) {
        return -1;
    }
    const std::int32_t clusterBytes = MultiplyWithOverflow(bytesPerSector, sectorsPerCluster, root);
    return MultiplyWithOverflow(static_cast<std::uint64_t>(clusterBytes), freeClusters, root);
}

std::optional<std::string> ReadRegistryString(RegistryRoot root, const std::string& subKey,
                                              const std::string& valueName) {
    HKEY key = nullptr;
    if (::RegOpenKeyA(RootKey(root), subKey.c_str(), &key) != ERROR_SUCCESS) return std::nullopt;
    DWORD type = 0;
    DWORD size = 0;
    if (::RegQueryValueExA(key, valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ) {
        return std::nullopt;
    }
    std::string buffer(size, ' ');
    if (::RegQueryValueExA(key, valueName.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer.data()),
                           &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return TrimAtNul(buffer);
}

}  // namespace velbooter
