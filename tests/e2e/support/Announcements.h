#pragma once
// Receives what a program announces to screen readers by itself.

#include <windows.h>

#include <vector>

namespace velbooter::e2e {

class Announcements {
 public:
    /// Listens to `process`. Only one object may exist at a time.
    explicit Announcements(DWORD process);
    ~Announcements();
    Announcements(const Announcements&) = delete;
    Announcements& operator=(const Announcements&) = delete;

    /// The windows whose texts were announced so far, in order.
    std::vector<HWND> Heard() const;

 private:
    HWINEVENTHOOK hook_;
};

}  // namespace velbooter::e2e
