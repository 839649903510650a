#pragma once
// Creates what a killed run leaves where the system cannot remove its part.

#include <filesystem>
#include <stdexcept>

#include "tools/shared/HostFiles.h"

namespace tools::testing {

/// Gives `file` the mark of a part.
inline void MarkAsPart(const std::filesystem::path& file) {
#ifdef _WIN32
    if (!SetTimeAndAttributes(file, DosTime{}, kSystem)) throw std::runtime_error("a part cannot be marked");
#else
    std::filesystem::permissions(file, std::filesystem::perms::sticky_bit,
                                 std::filesystem::perm_options::add);
#endif
}

}  // namespace tools::testing
