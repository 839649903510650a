#pragma once
// Reads from Drivers.ini which drivers go onto the disk: those with a value other than 0 in the groups that
// the drivers page has switched on.

#include <optional>
#include <string>

#include "src/common/LineReader.h"
#include "src/forms/Application.h"

namespace velbooter {

class ChosenDrivers {
 public:
    /// Opens Drivers.ini; `app` outlives the reader. Raises RuntimeError when it cannot be opened.
    explicit ChosenDrivers(const Application& app);

    /// Reads one line. Returns the driver cabinet that it puts onto the disk ("ndis\\e100b.cab"), or "" when
    /// it names none; nothing after the last line. Raises RuntimeError when the file cannot be read.
    std::optional<std::string> Next();

 private:
    const Application& app_;
    LineReader file_;
    std::string folder_;  // of the group that the lines belong to; "" while it is switched off
};

}  // namespace velbooter
