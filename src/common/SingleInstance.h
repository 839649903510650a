#pragma once
// Detects whether the program is already running from the same file, because two instances would overwrite
// each other's working files. Copies in different folders are independent. One file that is reached by two
// paths (a substituted drive, a share, a junction, a short name) counts as one.

#include <string>

#include "src/common/Handle.h"

namespace velbooter {

class SingleInstance {
 public:
    /// Opens the mutex of the program `executable` (a full path) and keeps it open as long as the object
    /// lives. All users who are logged on to the PC share it.
    explicit SingleInstance(const std::string& executable);

    /// Returns whether no other instance had the mutex open when this object was created. Also true when the
    /// system refused to create the mutex for another reason than that it exists.
    bool IsFirst() const { return isFirst_; }

 private:
    KernelHandle mutex_;
    bool isFirst_ = true;
};

}  // namespace velbooter
