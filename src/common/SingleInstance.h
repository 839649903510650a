#pragma once
// Tells whether this program already runs from the same file. Two copies in two folders do not disturb each
// other's working files, so each has a mark of its own; one file that is reached by two paths (a substituted
// drive, a share, a junction, a short name) has one.

#include <string>

#include "src/common/Handle.h"

namespace velbooter {

class SingleInstance {
 public:
    /// Takes the mark of the program `executable` (a full path) and holds it as long as the object lives. All
    /// users who are logged on to the PC share it.
    explicit SingleInstance(const std::string& executable);

    /// Returns whether nobody held the mark before.
    bool IsFirst() const { return isFirst_; }

 private:
    KernelHandle mutex_;
    bool isFirst_ = true;
};

}  // namespace velbooter
