#include "tests/support/Patience.h"

namespace velbooter {

bool Eventually(const std::function<bool()>& condition, DWORD stepMs) {
    const ULONGLONG end = ::GetTickCount64() + kPatienceMs;
    while (!condition()) {
        if (::GetTickCount64() > end) return false;
        ::Sleep(stepMs);
    }
    return true;
}

}  // namespace velbooter
