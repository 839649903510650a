#pragma once
// The real floppy in drive A:.

#include "src/forms/Application.h"

namespace velbooter {

/// Shows the system's format dialog for drive A: and waits for it to close. Returns whether the floppy was
/// formatted; if not, a message has said why.
bool FormatFloppy(Application& app);

}  // namespace velbooter
