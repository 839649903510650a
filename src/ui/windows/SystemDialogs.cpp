#include "src/ui/windows/SystemDialogs.h"

#include <commdlg.h>
#include <shlobj.h>

#include "src/common/Folders.h"
#include "src/forms/ProductTexts.h"
#include "src/run/ApplicationPaths.h"
#include "src/ui/windows/MessageBoxes.h"

namespace velbooter {

namespace {

// The system's form of a filter: description and pattern, each ended by a NUL, a further NUL at the end.
std::string SystemFilter(const std::string& pattern) {
    const std::string shown = pattern.empty() ? "*.*" : pattern;
    std::string filter = shown;
    filter += '\0';
    filter += shown;
    filter += '\0';
    return filter;
}

using Dialog = BOOL(WINAPI*)(OPENFILENAMEA*);

// A target that is a folder, or empty, is only where the dialog opens.
bool NamesAFile(const std::string& path) {
    return !path.empty() && path.back() != '\\' && path.back() != '/' && !FolderExists(path);
}

// Returns the path that `show` leaves in `settings`, or nothing after Cancel and after a failure, which a
// message reports.
std::optional<std::string> Result(OPENFILENAMEA& settings, Dialog show) {
    if (show(&settings) != 0) return settings.lpstrFile;
    if (const DWORD error = ::CommDlgExtendedError(); error != 0) {
        ShowMessageBox(settings.hwndOwner,
                       {"The system's dialog for a file failed with its error " + std::to_string(error) + ".",
                        kProgramTitle, Buttons::Ok, Icon::Critical});
    }
    return std::nullopt;
}

std::optional<std::string> Ask(HWND owner, const CommonDialog& dialog, Dialog show, DWORD flags,
                               const std::string& otherwise) {
    constexpr size_t kLongestPath = 32768;
    const bool hasName = NamesAFile(dialog.FileName);
    std::string path = hasName ? dialog.FileName : otherwise;
    path.resize(kLongestPath);
    const std::string filter = SystemFilter(dialog.Filter);
    OPENFILENAMEA settings{};
    settings.lStructSize = sizeof settings;
    settings.hwndOwner = owner;
    settings.lpstrFilter = filter.c_str();
    settings.lpstrFile = path.data();
    settings.nMaxFile = static_cast<DWORD>(path.size());
    settings.lpstrInitialDir = hasName ? nullptr : dialog.FileName.c_str();
    settings.lpstrTitle = dialog.DialogTitle.empty() ? nullptr : dialog.DialogTitle.c_str();
    settings.lpstrDefExt = dialog.DefaultExt.empty() ? nullptr : dialog.DefaultExt.c_str();
    settings.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | flags;
    if (show(&settings) != 0) return settings.lpstrFile;
    if (::CommDlgExtendedError() == 0) return std::nullopt;
    // What was typed cannot be a file's name.
    path = otherwise;
    path.resize(kLongestPath);
    settings.lpstrFile = path.data();
    return Result(settings, show);
}

}  // namespace

std::optional<std::string> AskForExistingFile(HWND owner, const CommonDialog& dialog) {
    return Ask(owner, dialog, ::GetOpenFileNameA, OFN_FILEMUSTEXIST, "");
}

std::optional<std::string> AskForTargetFile(HWND owner, const CommonDialog& dialog) {
    return Ask(owner, dialog, ::GetSaveFileNameA, OFN_OVERWRITEPROMPT, kDefaultImageName);
}

std::int32_t ShowFormatDialogForDriveA(HWND owner) {
    constexpr UINT kDriveA = 0;
    constexpr UINT kDefaultFormat = 0xFFFFFFFF;
    constexpr UINT kNoOptions = 0;
    return static_cast<std::int32_t>(::SHFormatDrive(owner, kDriveA, kDefaultFormat, kNoOptions));
}

}  // namespace velbooter
