#include "tools/shared/HostFiles.h"

#include <windows.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "tools/shared/Handle.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"
#include "tools/shared/WideText_win.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

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
            FailWithReason(folder, "this folder cannot be created", error);
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
