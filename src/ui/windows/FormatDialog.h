#pragma once
// The system's own format dialog.

#include <windows.h>

#include <cstdint>

namespace velbooter {

/// Shows the format dialog for drive A: above `owner` and returns its result when it closes.
std::int32_t ShowFormatDialogForDriveA(HWND owner);

}  // namespace velbooter
