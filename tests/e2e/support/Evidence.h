#pragma once
// What a failed test leaves for people to look at: the windows of the program as text, and a picture of the
// screen, both in build/e2e-failures under the test's name.

#include <windows.h>

#include <string>

namespace velbooter::e2e {

/// Records the windows of `process` and the screen with `reason`. Returns what was recorded, and where, as
/// text for the test's own message. That text also says when no picture could be taken, which is never a
/// failure of its own.
std::string RecordEvidence(DWORD process, const std::string& reason);

}  // namespace velbooter::e2e
