#pragma once
// Drivers.ini, the working selection of drivers: one section for each group and one key for each driver, "1"
// to include it and "0" to leave it out. NetworkLists, too, reads the section of the NDIS drivers.

#include <cstdint>
#include <optional>
#include <string>

#include "src/common/TextFiles.h"
#include "src/drivers/DriverStore.h"
#include "src/forms/Forms.h"
#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// Returns whether the drivers page includes the drivers of this group.
bool IsGroupEnabled(const FrmWizard& wizard, const DriverGroup& group);

/// Writes, for every driver of the folder drivers\<group>, the key <its name> = `value` into the
/// section [<group>] of `indexFile`, a file name relative to the application folder. Without that folder
/// nothing is written. Raises RuntimeError when the folder cannot be read.
void IndexDriverGroup(const ApplicationPaths& paths, Desktop& desktop, const std::string& indexFile,
                      const std::string& group, int value);

/// Recreates Drivers.ini with "1" for every driver in the store. Without any driver an empty file is created,
/// because the build still reads it. Raises RuntimeError when the old one cannot be deleted, a driver folder
/// cannot be read or the empty file cannot be created.
void RenewDriverIndex(const ApplicationPaths& paths, Desktop& desktop);

/// Narrows the group `group` (its section's name) of Drivers.ini to the drivers that the
/// section [DefaultDrivers] of files\`diskFile` names; without that section the selection stays as it is. A
/// driver that is not in the store gets a key, too. Raises RuntimeError 53 when there is no such file.
void GetDefaultDriversOptions(const ApplicationPaths& paths, Desktop& desktop, const std::string& diskFile,
                              const std::string& group);

/// Reads which drivers go onto the disk: those with a value other than 0 in the groups that are enabled on
/// the drivers page.
class ChosenDrivers {
 public:
    /// Opens Drivers.ini; `wizard` must outlive the reader. Raises RuntimeError when it cannot be opened.
    ChosenDrivers(const ApplicationPaths& paths, const FrmWizard& wizard);

    /// Reads one line. Returns the driver cabinet that it puts onto the disk ("ndis\\e100b.cab"), or "" when
    /// it names none; nothing after the last line. Raises RuntimeError when the file cannot be read.
    std::optional<std::string> Next();

 private:
    const FrmWizard& wizard_;
    LineReader file_;
    std::string folder_;  ///< of the current group; "" when the group is disabled
};

/// Returns the number of lines of [section] in `fileName` that are neither empty nor comments, the header
/// line included; with `useSuffix` only those that end in `suffix`. Raises RuntimeError when the file cannot
/// be read.
std::int32_t CountSectionLines(const std::string& fileName, const std::string& section, bool useSuffix,
                               const std::string& suffix);

/// Returns the number of lines of `fileName`, empty ones included. Raises RuntimeError when it cannot be
/// read.
std::int32_t CountFileLines(const std::string& fileName);

}  // namespace velbooter
