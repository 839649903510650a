#pragma once
// Tells whether this program already runs from the same application folder. Two copies in two folders do not
// disturb each other's working files, so each folder has a mark of its own.

#include <string>

#include "src/common/Handle.h"

namespace velbooter {

class SingleInstance {
 public:
    /// Takes the mark of `applicationFolder` (case does not count) and holds it as long as the object lives.
    explicit SingleInstance(const std::string& applicationFolder);

    /// Returns whether nobody held the mark before.
    bool IsFirst() const { return isFirst_; }

 private:
    KernelHandle mutex_;
    bool isFirst_ = true;
};

}  // namespace velbooter
