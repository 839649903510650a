#pragma once
// The driver store: driver cabinets in four group folders below drivers\.

#include <array>
#include <optional>
#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// What belongs to one group of drivers.
struct DriverGroup {
    const char* Section;          ///< its section in Drivers.ini
    const char* Folder;           ///< its folder below drivers\, and below Lib\ on the disk
    const char* DescriptionFile;  ///< the member of a cabinet whose first line describes the driver
    const char* PciFile;          ///< the member that lists the adapters' PCI numbers
};

/// The four groups: SCSI, network drivers for NDIS, and those for ODI of 16 and of 32 bits. kDriverGroups
/// has the order in which Drivers.ini lists them.
inline constexpr DriverGroup kAspiDrivers{"ASPI", "aspi", "scsi.txt", "scsi.pci"};
inline constexpr DriverGroup kNdisDrivers{"NDIS", "ndis", "ndis.txt", "ndis.pci"};
inline constexpr DriverGroup kOdi16Drivers{"ODI16", "odi16", "odi.txt", "odi16.pci"};
inline constexpr DriverGroup kOdi32Drivers{"ODI32", "odi32", "odi.txt", "odi32.pci"};
inline constexpr std::array<DriverGroup, 4> kDriverGroups{kAspiDrivers, kNdisDrivers, kOdi16Drivers,
                                                          kOdi32Drivers};

/// Returns the name of the driver that a file of a driver folder holds: the file's name in upper case
/// without ".cab"; nothing for any other file. The system's own "*.cab" also matches "x.cab_old", by its
/// short name.
std::optional<std::string> DriverNameOf(const std::string& file);

/// Returns whether the group's folder exists.
bool HasDriverFolder(const ApplicationPaths& paths, const DriverGroup& group);

/// Extracts the members that match `pattern` from a driver cabinet into the application folder, overwriting.
/// `cabinet` is relative to the folder drivers ("ndis\E100B.cab"). The result shows only in the files that
/// exist afterwards. Leaves the application folder as the current folder; raises RuntimeError when it cannot
/// be made current.
void ExtractFromDriver(const ApplicationPaths& paths, Desktop& desktop, const std::string& cabinet,
                       const std::string& pattern);

/// Returns the description of the driver in drivers\`folder`\`cabinetFile`: the first line of the member
/// `descriptionFile` from its 14th character on, trimmed, or a text that says what is wrong with it. Raises
/// RuntimeError as ExtractFromDriver does, and when the extracted text cannot be read or deleted.
std::string DriverDescription(const ApplicationPaths& paths, Desktop& desktop, const std::string& folder,
                              const std::string& cabinetFile, const std::string& descriptionFile);

}  // namespace velbooter
