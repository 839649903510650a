#include "src/ui/windows/FileDialogs.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>

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

std::optional<std::string> Ask(HWND owner, const CommonDialog& dialog, Dialog show, DWORD flags) {
    char path[MAX_PATH] = "";
    std::copy_n(dialog.FileName.begin(), std::min<size_t>(dialog.FileName.size(), MAX_PATH - 1), path);
    const std::string filter = SystemFilter(dialog.Filter);
    OPENFILENAMEA settings{};
    settings.lStructSize = sizeof settings;
    settings.hwndOwner = owner;
    settings.lpstrFilter = filter.c_str();
    settings.lpstrFile = path;
    settings.nMaxFile = MAX_PATH;
    settings.lpstrTitle = dialog.DialogTitle.empty() ? nullptr : dialog.DialogTitle.c_str();
    settings.lpstrDefExt = dialog.DefaultExt.empty() ? nullptr : dialog.DefaultExt.c_str();
    settings.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | flags;
    if (show(&settings) != 0) return path;
    if (::CommDlgExtendedError() != FNERR_INVALIDFILENAME) return std::nullopt;
    // The preset is no file name (a folder, say): the dialog is shown without it.
    path[0] = '\0';
    if (show(&settings) == 0) return std::nullopt;
    return path;
}

}  // namespace

std::optional<std::string> AskForExistingFile(HWND owner, const CommonDialog& dialog) {
    return Ask(owner, dialog, ::GetOpenFileNameA, OFN_FILEMUSTEXIST);
}

std::optional<std::string> AskForTargetFile(HWND owner, const CommonDialog& dialog) {
    return Ask(owner, dialog, ::GetSaveFileNameA, OFN_OVERWRITEPROMPT);
}

}  // namespace velbooter
