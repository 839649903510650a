#pragma once
// How velbooter.exe reports the image that it has built to the velbooter.com that started it. Both know the
// number of the process, so it is in the name of the memory that they share; without a velbooter.com there is
// none, and nothing is reported.

#include <cstdint>
#include <string>

#include "src/common/Handle.h"

namespace velbooter {

/// The side that asks, for as long as the object lives.
class RunReport {
 public:
    /// Asks the process with this number, which must not have begun to run. Where the system refuses the
    /// memory, there will be no answer.
    explicit RunReport(std::uint32_t process);

    /// Returns the full path of the image that the process has built, in the ANSI code page; "" when it has
    /// built none so far.
    std::string BuiltImage() const;

 private:
    KernelHandle memory_;
};

/// Reports `image`, the path of an image that this process has built, to whoever asks. A relative path counts
/// from the current folder. A path of 260 bytes or more, which is too long for the ANSI functions, is not
/// reported.
void ReportBuiltImage(const std::string& image);

}  // namespace velbooter
