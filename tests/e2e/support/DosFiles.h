#pragma once
// What the tests of the DOS files share: their names, and what the program says about them.

#include <string>
#include <vector>

#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

/// The names of the files in the order in which they are imported.
const std::vector<std::string>& DosFileNames();

/// The question when they are missing.
ShownMessage ImportQuestion();

/// The texts of the wait window during an import.
std::vector<std::string> ImportStatuses();

}  // namespace velbooter::e2e
