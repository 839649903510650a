#pragma once
// The driver store: driver cabinets in four group folders below drivers\, and the working selection
// Drivers.ini, one section for each group and one key for each driver, "1" to include it and "0" to leave it
// out.

#include <array>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// What belongs to one group of drivers.
struct DriverGroup {
    const char* Section;          ///< its section in Drivers.ini
    const char* Folder;           ///< its folder below drivers\, and below Lib\ on the disk
    const char* DescriptionFile;  ///< the member of a cabinet whose first line describes the driver
    const char* PciFile;          ///< the member that lists the adapters' PCI numbers
};

inline constexpr DriverGroup kAspiDrivers{"ASPI", "aspi", "scsi.txt", "scsi.pci"};
inline constexpr DriverGroup kNdisDrivers{"NDIS", "ndis", "ndis.txt", "ndis.pci"};
inline constexpr DriverGroup kOdi16Drivers{"ODI16", "odi16", "odi.txt", "odi16.pci"};
inline constexpr DriverGroup kOdi32Drivers{"ODI32", "odi32", "odi.txt", "odi32.pci"};
inline constexpr std::array<DriverGroup, 4> kDriverGroups{kAspiDrivers, kNdisDrivers, kOdi16Drivers,
                                                          kOdi32Drivers};

/// Returns whether the group's folder is there.
bool HasDriverFolder(const Application& app, const DriverGroup& group);

/// Makes Drivers.ini anew: every driver of every group that is there gets "1". Without any driver the file is
/// empty, because a build reads it line by line. Raises RuntimeError when the old one cannot be deleted.
void RenewDriverIndex(Application& app);

/// Narrows the group `group` (its section's name) of Drivers.ini to the drivers that the section
/// [DefaultDrivers] of files\`diskFile` names; without that section the selection stays as it is. A driver
/// that is not in the store gets its key all the same. Raises RuntimeError 53 when there is no such file.
void GetDefaultDriversOptions(Application& app, const std::string& diskFile, const std::string& group);

/// Extracts the members that match `pattern` from a driver cabinet into the application folder, overwriting.
/// `cabinet` is relative to the folder drivers ("ndis\E100B.cab"). What could be extracted is told by the
/// files that are there afterwards. Leaves the application folder as the current folder.
void ExtractFromDriver(Application& app, const std::string& cabinet, const std::string& pattern);

/// Returns the description of the driver in drivers\`folder`\`cabinetFile`: the first line of the member
/// `descriptionFile` from its 14th character on, trimmed, or a text that says what is wrong with it.
std::string DriverDescription(Application& app, const std::string& folder, const std::string& cabinetFile,
                              const std::string& descriptionFile);

}  // namespace velbooter
