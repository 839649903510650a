#pragma once
// What the tests of the DOS files share: the names of the files, and the program's messages about them.

#include <string>
#include <vector>

#include "tests/e2e/support/ShownMessage.h"

namespace velbooter::e2e {

/// The names of the files in the order in which they are imported.
const std::vector<std::string>& DosFileNames();

/// The program's question when they are missing.
ShownMessage ImportQuestion();

/// The texts of the wait window during an import.
std::vector<std::string> ImportStatuses();

}  // namespace velbooter::e2e
