#pragma once
// How long a test waits for what has to come. It ends what hangs and says nothing of how fast the program is:
// a machine that compiles beside the tests can make a moment last a minute.

#include <windows.h>

#include <functional>

namespace velbooter {

inline constexpr DWORD kPatienceMs = 500000;

/// Waits until `condition` holds, asking again after `stepMs` milliseconds. Returns false when patience ends
/// first.
bool Eventually(const std::function<bool()>& condition, DWORD stepMs = 10);

}  // namespace velbooter
