#include <windows.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "tools/shared/DeviceWrite.h"
#include "tools/shared/HostText.h"
#include "tools/shared/PartFile.h"
#include "tools/shared/PartName.h"
#include "tools/shared/ToolError.h"

namespace tools {
namespace {

constexpr DWORD kMark = FILE_ATTRIBUTE_SYSTEM;
constexpr ULONGLONG kReplacePatience = 5000;  // milliseconds
constexpr DWORD kReplaceStep = 50;            // milliseconds

bool IsListed(const std::filesystem::path& file) {
    WIN32_FIND_DATAW found{};
    return static_cast<bool>(UniqueHandle<handles::Search>(FindFirstFileW(file.c_str(), &found)));
}

bool MarkForDeletion(HANDLE file, bool isMarked) {
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = isMarked ? TRUE : FALSE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition) != 0;
}

// Renaming the file while it is still open leaves no moment in which a virus scanner could open it.
bool RenameOpenFile(HANDLE file, const std::wstring& target) {
    const std::size_t nameBytes = target.size() * sizeof(wchar_t);
    const std::size_t size = offsetof(FILE_RENAME_INFO, FileName) + nameBytes + sizeof(wchar_t);
    FILE_RENAME_INFO header{};
    header.ReplaceIfExists = TRUE;
    header.FileNameLength = static_cast<DWORD>(nameBytes);
    std::vector<std::uint8_t> request(std::max(size, sizeof header));
    std::memcpy(request.data(), &header, sizeof header);
    std::memcpy(request.data() + offsetof(FILE_RENAME_INFO, FileName), target.data(), nameBytes);
    return SetFileInformationByHandle(file, FileRenameInfo, request.data(),
                                      static_cast<DWORD>(request.size())) != 0;
}

bool MeansInUse(DWORD error) {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
}

// What a virus scanner, an indexer or a backup holds is free again in a moment, so a target in use is waited
// for. Between the attempts the file is marked for deletion: it disappears with a process that is killed
// then.
bool RenameOnceTargetIsFree(HANDLE file, const std::wstring& target, DWORD& error) {
    const ULONGLONG end = GetTickCount64() + kReplacePatience;
    for (;;) {
        MarkForDeletion(file, false);
        if (RenameOpenFile(file, target)) return true;
        error = GetLastError();
        if (!MeansInUse(error) || GetTickCount64() >= end) return false;
        MarkForDeletion(file, true);
        Sleep(kReplaceStep);
    }
}

bool IsMarked(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION status{};
    constexpr DWORD kNoPart = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return GetFileInformationByHandle(file, &status) && status.nNumberOfLinks == 1 &&
           (status.dwFileAttributes & kNoPart) == 0 && (status.dwFileAttributes & kMark) != 0;
}

void RemoveMark(HANDLE file) {
    FILE_BASIC_INFO basics{};  // times of 0 stay as they are
    basics.FileAttributes = FILE_ATTRIBUTE_ARCHIVE;
    SetFileInformationByHandle(file, FileBasicInfo, &basics, sizeof basics);
}

FileHandle OpenPart(const std::filesystem::path& part, DWORD access, DWORD share, DWORD disposition,
                    DWORD attributes) {
    return FileHandle(CreateFileW(part.c_str(), access | FILE_READ_ATTRIBUTES, share, nullptr, disposition,
                                  attributes | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

// Returns a part that is empty. Otherwise none, and `error` says why: ERROR_FILE_EXISTS when the name is the
// user's.
FileHandle TakePart(const std::filesystem::path& part, DWORD& error) {
    FileHandle fresh = OpenPart(part, GENERIC_WRITE | DELETE, 0, CREATE_NEW, kMark);
    error = GetLastError();
    if (fresh || error != ERROR_FILE_EXISTS) return fresh;
    // Not opened for writing unless it bears the mark: another program may be working on a file of the
    // user's. A part that waits to be deleted has no attributes.
    const DWORD attributes = GetFileAttributesW(part.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kMark) == 0) return {};
    FileHandle left = OpenPart(part, GENERIC_WRITE | DELETE, 0, OPEN_EXISTING, 0);
    if (!left) {
        error = GetLastError();
        // The other run has ended in the meantime.
        return error == ERROR_FILE_NOT_FOUND ? TakePart(part, error) : FileHandle();
    }
    if (IsMarked(left.Get()) && SetSize(left, 0)) return left;
    return {};
}

}  // namespace

PartFile::PartFile(const std::filesystem::path& target) : target_(target) {
    const std::filesystem::path longTarget = LongPath(target);
    DWORD error = ERROR_FILE_EXISTS;
    for (unsigned number = 1; number <= kPartNames && error == ERROR_FILE_EXISTS; ++number) {
        part_ = PartName(longTarget, number);
        handle_ = TakePart(part_, error);
        if (!handle_) continue;
        // Where the file system cannot do this, a killed run leaves its part and the next run writes over it.
        MarkForDeletion(handle_.Get(), true);
        return;
    }
    // A part that waits to be deleted answers "access denied"; only a search still sees it.
    if (error == ERROR_SHARING_VIOLATION || (error == ERROR_ACCESS_DENIED && IsListed(part_)))
        throw ToolError(Utf8FromPath(target) + ": is being written by another run");
    FailWithReason(target, "cannot be written", error);
}

PartFile::~PartFile() {
    if (!handle_) return;
    const bool isMarked = MarkForDeletion(handle_.Get(), true);
    handle_.Reset();
    if (!isMarked) DeleteFileW(part_.c_str());
}

void PartFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t count = WriteSome(handle_, offset, bytes);
        if (count == 0) FailWithReason(target_, "cannot be written", GetLastError());
        offset += count;
        bytes = bytes.subspan(count);
    }
}

void PartFile::Resize(std::uint64_t size) {
    if (!SetSize(handle_, size)) FailWithReason(target_, "cannot be written", GetLastError());
}

void PartFile::MoveToTarget() {
    // A file system may keep the renaming and lose the contents when the power fails. Network file systems
    // may not have this function.
    if (!FlushFileBuffers(handle_.Get()) && GetLastError() != ERROR_INVALID_FUNCTION &&
        GetLastError() != ERROR_NOT_SUPPORTED)
        FailWithReason(target_, "cannot be written", GetLastError());
    const std::filesystem::path longTarget = LongPath(target_);
    DWORD error = ERROR_SUCCESS;
    bool isMoved = RenameOnceTargetIsFree(handle_.Get(), longTarget.native(), error);
    if (!isMoved && !MeansInUse(error)) {
        // Some network file systems do not rename an open file.
        handle_.Reset();
        isMoved = MoveFileExW(part_.c_str(), longTarget.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
        error = GetLastError();
        if (isMoved) SetFileAttributesW(longTarget.c_str(), FILE_ATTRIBUTE_ARCHIVE);
        if (!isMoved) DeleteFileW(part_.c_str());
    }
    if (!isMoved) {
        throw ToolError(
            Utf8FromPath(target_) + ": cannot be replaced: " +
            (MeansInUse(error) ? "another program is using it, or it is protected" : SystemReason(error)));
    }
    if (handle_) RemoveMark(handle_.Get());
    handle_.Reset();
}

bool IsPart(const std::filesystem::path& file) {
    const FileHandle part =
        OpenPart(LongPath(file), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING, 0);
    return part && IsMarked(part.Get());
}

}  // namespace tools
