#pragma once
// The small wait window as plain state: one status line.

#include "src/forms/Controls.h"

namespace velbooter {

struct FrmWait {
    bool Visible = false;
    Label LblStatus{"Please wait ..."};
};

}  // namespace velbooter
