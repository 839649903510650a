#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "tools/shared/ByteOrder.h"
#include "tools/shared/Handle.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t kLongPrefix[] = L"\\\\?\\";
constexpr wchar_t kLongNetworkPrefix[] = L"\\\\?\\UNC\\";
constexpr std::size_t kLongPrefixLength = 4;
constexpr std::size_t kLongNetworkPrefixLength = 8;

// Returns whether `wide` could be expressed, which names with half a surrogate pair cannot.
bool ConvertToUtf8(const std::wstring& wide, std::string& text) {
    text.clear();
    if (wide.empty()) return true;
    const int length = static_cast<int>(wide.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (needed <= 0) return false;
    text.resize(static_cast<std::size_t>(needed));
    return WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, wide.data(), length, text.data(), needed,
                               nullptr, nullptr) == needed;
}

std::string LossyUtf8(const std::wstring& wide) {
    std::string text;
    if (ConvertToUtf8(wide, text)) return text;
    for (const wchar_t unit : wide) text += unit >= 0x20 && unit < 0x7F ? static_cast<char>(unit) : '?';
    return text;
}

std::wstring WideFromUtf8(const std::string& text) {
    const std::u16string wide = Utf16FromUtf8(text);
    return {wide.begin(), wide.end()};
}

// Memory that the system has allocated for an array of `Element`.
template <typename Element>
struct LocalMemory {
    using Value = Element*;
    static Value None() { return nullptr; }
    static void Close(Value memory) { LocalFree(memory); }
};

// Converts by the rules that were in force at the time itself, as the file manager shows it. The rules of a
// year are kept, because fetching them costs more than reading a folder's entry.
class LocalClock {
 public:
    DosTime FromFileTime(const FILETIME& moment) {
        SYSTEMTIME utc{};
        SYSTEMTIME local{};
        if (!FileTimeToSystemTime(&moment, &utc) || !FetchRules(utc.wYear)) return DosTime{};
        if (!SystemTimeToTzSpecificLocalTime(&rules_, &utc, &local)) return DosTime{};
        return PackDosTime(local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond);
    }

    bool ToFileTime(DosTime packed, FILETIME& moment) {
        SYSTEMTIME local{};
        SYSTEMTIME utc{};
        const CalendarTime units = UnpackDosTime(packed);
        local.wYear = static_cast<WORD>(units.Year);
        local.wMonth = static_cast<WORD>(units.Month);
        local.wDay = static_cast<WORD>(units.Day);
        local.wHour = static_cast<WORD>(units.Hour);
        local.wMinute = static_cast<WORD>(units.Minute);
        local.wSecond = static_cast<WORD>(units.Second);
        return FetchRules(local.wYear) && TzSpecificLocalTimeToSystemTime(&rules_, &local, &utc) &&
               SystemTimeToFileTime(&utc, &moment);
    }

 private:
    bool FetchRules(WORD year) {
        if (year == year_) return true;
        if (!GetTimeZoneInformationForYear(year, nullptr, &rules_)) return false;
        year_ = year;
        return true;
    }

    WORD year_ = 0;
    TIME_ZONE_INFORMATION rules_{};
};

HostFile Describe(const WIN32_FIND_DATAW& found, const fs::path& folder, LocalClock& clock) {
    HostFile entry;
    if (!ConvertToUtf8(found.cFileName, entry.Name))
        throw ToolError(Utf8FromPath(folder) +
                        ": holds a name that is not Unicode: " + LossyUtf8(found.cFileName));
    constexpr DWORD kOrdinary =
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    entry.Attributes = static_cast<std::uint8_t>(found.dwFileAttributes & kOrdinary);
    entry.Modified = clock.FromFileTime(found.ftLastWriteTime);
    entry.IsFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    entry.IsSpecial = (found.dwFileAttributes & FILE_ATTRIBUTE_DEVICE) != 0;
    if (!entry.IsFolder)
        entry.Size = (static_cast<std::uint64_t>(found.nFileSizeHigh) << 32) | found.nFileSizeLow;
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && entry.IsFolder) {
        // Other reparse points (files kept online, for instance) are ordinary folders to a reader. Wine gives
        // no tag.
        const DWORD tag = found.dwReserved0;
        entry.IsLink = tag == IO_REPARSE_TAG_SYMLINK || tag == IO_REPARSE_TAG_MOUNT_POINT || tag == 0;
    }
    return entry;
}

bool Identify(const fs::path& path, BY_HANDLE_FILE_INFORMATION& status) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle file(CreateFileW(LongPath(path).c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return file && GetFileInformationByHandle(file.Get(), &status);
}

// Returns the number of characters of a long path that name its drive or share, with the backslash after it.
// What follows are folders. Without that backslash it is a device, which cannot be queried.
std::size_t RootLength(const std::wstring& path) {
    const bool isShare = path.starts_with(kLongNetworkPrefix);
    std::size_t end = path.find(L'\\', isShare ? kLongNetworkPrefixLength : kLongPrefixLength);
    if (isShare && end != std::wstring::npos) end = path.find(L'\\', end + 1);
    return end == std::wstring::npos ? path.size() : end + 1;
}

// A link to a file is listed with the size 0 of the link itself; what it leads to is what counts.
void FollowFileLink(const fs::path& file, const WIN32_FIND_DATAW& found, HostFile& entry, LocalClock& clock) {
    if (entry.IsFolder || (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 ||
        found.dwReserved0 != IO_REPARSE_TAG_SYMLINK)
        return;
    const FileHandle target(CreateFileW(file.c_str(), FILE_READ_ATTRIBUTES,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    BY_HANDLE_FILE_INFORMATION status{};
    if (!target || !GetFileInformationByHandle(target.Get(), &status)) {
        entry.IsSpecial = true;
        return;
    }
    entry.Size = (static_cast<std::uint64_t>(status.nFileSizeHigh) << 32) | status.nFileSizeLow;
    entry.Modified = clock.FromFileTime(status.ftLastWriteTime);
}

}  // namespace

std::string SystemReason(std::int64_t error) {
    wchar_t text[512];
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(error), 0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.')) --length;
    return length > 0 ? LossyUtf8({text, length}) : "error " + std::to_string(error);
}

std::vector<std::string> Arguments(int, char**) {
    int count = 0;
    const UniqueHandle<LocalMemory<wchar_t*>> words(CommandLineToArgvW(GetCommandLineW(), &count));
    const std::vector<std::wstring> wide(words.Get() + (words ? 1 : 0), words.Get() + count);
    std::vector<std::string> arguments(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i)
        // It must not be used in a lossy form: its question marks would be wildcards.
        if (!ConvertToUtf8(wide[i], arguments[i]))
            throw ToolError("this name is not Unicode: " + LossyUtf8(wide[i]));
    return arguments;
}

void UseSystemLibrariesOnly() {
    // A Windows 7 without its updates has no such function.
    using SetDirectories = BOOL(WINAPI*)(DWORD);
    const auto set = reinterpret_cast<SetDirectories>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories")));
    if (set != nullptr) set(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

void Print(Stream stream, const std::string& text) {
    const HANDLE output = GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode) && IsUtf8(text)) {
        const std::wstring wide = WideFromUtf8(text);
        WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    } else {
        WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
}

fs::path PathFromUtf8(const std::string& text) {
    if (!IsUtf8(text)) throw ToolError("this name is not UTF-8: " + PrintableBytes(text));
    return WideFromUtf8(text);
}

std::u16string FoldedName(const std::string& name) {
    std::wstring wide = WideFromUtf8(name);
    const int length = static_cast<int>(wide.size());
    // Without further flags the rules are those of the file systems.
    if (length > 0)
        LCMapStringEx(L"", LCMAP_UPPERCASE, wide.data(), length, wide.data(), length, nullptr, nullptr, 0);
    return {wide.begin(), wide.end()};
}

std::string Utf8FromPath(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(kLongNetworkPrefix))
        return LossyUtf8(L"\\\\" + text.substr(kLongNetworkPrefixLength));
    if (text.starts_with(kLongPrefix)) return LossyUtf8(text.substr(kLongPrefixLength));
    return LossyUtf8(text);
}

fs::path LongPath(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(kLongPrefix) || text.empty()) return path;
    std::wstring full;
    DWORD length = GetFullPathNameW(text.c_str(), 0, nullptr, nullptr);
    if (length == 0) return path;
    full.resize(length);
    length = GetFullPathNameW(text.c_str(), length, full.data(), nullptr);
    full.resize(length);
    // Devices ("\\.\...", what "NUL" becomes) have no long form.
    if (full.starts_with(L"\\\\.\\")) return full;
    if (full.starts_with(L"\\\\")) return kLongNetworkPrefix + full.substr(2);
    return kLongPrefix + full;
}

FileKind KindOf(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return FileKind::Missing;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return FileKind::Folder;
    if ((attributes & FILE_ATTRIBUTE_DEVICE) != 0) return FileKind::Special;
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? FileKind::ReadOnly : FileKind::Writable;
}

std::uint64_t SizeOf(const fs::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA status{};
    if (!GetFileAttributesExW(LongPath(file).c_str(), GetFileExInfoStandard, &status)) return 0;
    if ((status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return 0;
    return (static_cast<std::uint64_t>(status.nFileSizeHigh) << 32) | status.nFileSizeLow;
}

std::uint64_t FreeSpace(const fs::path& folder) {
    std::wstring present = LongPath(folder.empty() ? fs::path(L".") : folder).native();
    const std::size_t root = RootLength(present);
    while (present.size() > root && KindOf(present) != FileKind::Folder)
        present.resize(std::max(root, present.find_last_of(L'\\')));
    if (present.back() != L'\\') present += L'\\';
    ULARGE_INTEGER space{};
    if (!GetDiskFreeSpaceExW(present.c_str(), &space, nullptr, nullptr))
        return std::numeric_limits<std::uint64_t>::max();
    return space.QuadPart;
}

namespace {

// The whole path in one case and without a backslash at its end.
std::u16string FoldedPath(const fs::path& path) {
    std::u16string folded = FoldedName(Utf8FromPath(LongPath(path)));
    if (folded.ends_with(u'\\')) folded.pop_back();
    return folded;
}

}  // namespace

bool IsSame(const fs::path& left, const fs::path& right) {
    BY_HANDLE_FILE_INFORMATION one{};
    BY_HANDLE_FILE_INFORMATION other{};
    if (!Identify(left, one) || !Identify(right, other)) return false;
    // Some network file systems number no files.
    if (one.nFileIndexHigh == 0 && one.nFileIndexLow == 0) return FoldedPath(left) == FoldedPath(right);
    return one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

bool LiesBelow(const fs::path& file, const fs::path& folder) {
    const std::wstring full = LongPath(file).native();
    const std::size_t root = RootLength(full);
    for (std::size_t end = full.find_last_of(L'\\'); end != std::wstring::npos && end + 1 >= root;
         end = full.find_last_of(L'\\', end - 1))
        // With a backslash after it a drive is its root and not the device.
        if (IsSame(full.substr(0, end + 1), folder)) return true;
    return false;
}

void CreateFolders(const fs::path& folder) {
    std::wstring current = LongPath(folder).native();
    const std::size_t root = RootLength(current);
    std::vector<std::wstring> missing;
    while (current.size() > root && KindOf(current) != FileKind::Folder) {
        missing.push_back(current);
        current.resize(std::max(root, current.find_last_of(L'\\')));
    }
    for (; !missing.empty(); missing.pop_back()) {
        if (CreateDirectoryW(missing.back().c_str(), nullptr)) continue;
        // Another process may have created it in the meantime.
        const DWORD error = GetLastError();
        if (KindOf(missing.back()) != FileKind::Folder)
            FailWithReason(folder, "this folder cannot be made", error);
    }
}

std::vector<HostFile> ListFolder(const fs::path& folder) {
    const fs::path longFolder = LongPath(folder);
    WIN32_FIND_DATAW found{};
    const UniqueHandle<handles::Search> search(FindFirstFileExW((longFolder / L"*").c_str(), FindExInfoBasic,
                                                                &found, FindExSearchNameMatch, nullptr,
                                                                FIND_FIRST_EX_LARGE_FETCH));
    if (!search) {
        // The root of an empty drive has not even the entries "." and "..".
        const DWORD error = GetLastError();
        const DWORD attributes = GetFileAttributesW(longFolder.c_str());
        if (error == ERROR_FILE_NOT_FOUND && attributes != INVALID_FILE_ATTRIBUTES &&
            (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            return {};
        FailWithReason(folder, "this folder cannot be read", error);
    }
    LocalClock clock;
    std::vector<HostFile> entries;
    do {
        if (std::wcscmp(found.cFileName, L".") == 0 || std::wcscmp(found.cFileName, L"..") == 0) continue;
        HostFile entry = Describe(found, folder, clock);
        FollowFileLink(longFolder / found.cFileName, found, entry, clock);
        entries.push_back(std::move(entry));
    } while (FindNextFileW(search.Get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES)
        FailWithReason(folder, "this folder cannot be read", GetLastError());
    std::sort(entries.begin(), entries.end(),
              [](const HostFile& a, const HostFile& b) { return PrecedesWithoutCase(a.Name, b.Name); });
    return entries;
}

bool SetTimeAndAttributes(const fs::path& file, DosTime modified, std::uint8_t attributes) {
    const fs::path longFile = LongPath(file);
    FILETIME moment{};
    if (LocalClock().ToFileTime(NearestMoment(modified), moment)) {
        const FileHandle target(CreateFileW(longFile.c_str(), FILE_WRITE_ATTRIBUTES,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (target) SetFileTime(target.Get(), nullptr, nullptr, &moment);
    }
    constexpr DWORD kOrdinary = kReadOnly | kHidden | kSystem | kArchive;
    const DWORD wanted = attributes & kOrdinary;
    return SetFileAttributesW(longFile.c_str(), wanted != 0 ? wanted : FILE_ATTRIBUTE_NORMAL) != 0;
}

}  // namespace tools
