#pragma once
// The two lists that a disk with NDIS drivers carries: etc\_msnet.nic, from which the user of the disk picks
// a driver, and etc\_msnet.pci, which maps the PCI numbers of an adapter to its driver.

#include <string>

#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// The entries of the two lists in LstFiles.
inline constexpr const char* kNicListEntry = "etc\\_msnet.nic";
inline constexpr const char* kPciListEntry = "etc\\_msnet.pci";

/// In NDIS mode, with the network row ticked, builds the two lists of the selected drivers in cabs\etc and
/// adds them to LstFiles. In every mode it marks all entries below "etc\_" as selected. Raises RuntimeError
/// when a list cannot be written or moved to its place.
void CreatePrebuiltFiles(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard);

/// Returns whether CreatePrebuiltFiles builds the two lists in this run.
bool HasNetworkLists(const FrmWizard& wizard);

/// Returns whether CreatePrebuiltFiles marks the entry as selected.
bool IsPrebuiltEntry(const std::string& entry);

/// Writes cabs\_`name`.txt and cabs\_`name`.pci: their header lines and then, for every driver that section
/// `group` (in upper case) of Drivers.ini selects, the first line of the member `name`.txt and all lines of
/// the member `name`.pci of its cabinet in drivers\`group`. A driver without a member adds nothing to that
/// list. Raises RuntimeError when a file cannot be read or written.
void CreateCacheFile(const ApplicationPaths& paths, Desktop& desktop, ProgressBar& progress,
                     const std::string& name, const std::string& group);

}  // namespace velbooter
