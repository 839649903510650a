#include "src/ui/windows/FormatDialog.h"

#include <shlobj.h>

namespace velbooter {

std::int32_t ShowFormatDialogForDriveA(HWND owner) {
    constexpr UINT kDriveA = 0;
    constexpr UINT kDefaultFormat = 0xFFFFFFFF;
    constexpr UINT kNoOptions = 0;
    return static_cast<std::int32_t>(::SHFormatDrive(owner, kDriveA, kDefaultFormat, kNoOptions));
}

}  // namespace velbooter
