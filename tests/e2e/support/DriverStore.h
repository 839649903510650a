#pragma once
// Driver cabinets for an application folder, packed by its own cabarc.exe.

#include <string>

#include "tests/e2e/support/DemoFolder.h"

namespace velbooter::e2e {

/// Empties the driver store of `folder`, so that it contains only the drivers that a test adds.
void ClearDrivers(const DemoFolder& folder);

/// Adds the driver `name` to the group folder `group` ("aspi", "ndis", "odi16" or "odi32") with a
/// description, PCI numbers, and a file of its own. Throws HarnessFailure when it cannot be packed.
void AddDriver(const DemoFolder& folder, const std::string& group, const std::string& name,
               const std::string& description);

}  // namespace velbooter::e2e
