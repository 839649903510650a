#include "tests/e2e/support/Patience.h"

namespace velbooter::e2e {

bool Eventually(const std::function<bool()>& condition, DWORD stepMs) {
    const ULONGLONG end = ::GetTickCount64() + kPatienceMs;
    while (!condition()) {
        if (::GetTickCount64() > end) return false;
        ::Sleep(stepMs);
    }
    return true;
}

}  // namespace velbooter::e2e
