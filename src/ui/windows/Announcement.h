#pragma once
// What happens without the user's doing has to reach those, too, who have the screen read to them: a step of
// the work, its outcome. None of these labels ever has the focus.

#include <windows.h>

namespace velbooter {

/// Lets readers of the screen say the text of `label`.
inline void Announce(HWND label) {
    ::NotifyWinEvent(EVENT_SYSTEM_ALERT, label, OBJID_CLIENT, CHILDID_SELF);
}

}  // namespace velbooter
