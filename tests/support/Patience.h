#pragma once
// How long a test waits for what has to happen. The limit only ends what hangs and says nothing about the
// program's speed: on a machine that compiles at the same time, a moment can last a minute.

#include <windows.h>

#include <functional>

namespace velbooter {

inline constexpr DWORD kPatienceMs = 500000;

/// Waits until `condition` holds, which is checked every `stepMs` milliseconds. Returns false when the time
/// limit comes first.
bool Eventually(const std::function<bool()>& condition, DWORD stepMs = 10);

}  // namespace velbooter
