#pragma once
// Great numbers of what a user can add: disks, drivers, files.

#include <string>
#include <vector>

#include "tests/e2e/support/ApplicationFolder.h"

namespace velbooter::e2e {

/// The text of a number in four digits, so that names stand in the order of their numbers.
std::string FourDigits(int number);

/// Makes a catalogue of the disks "disk0001" to `count`. The custom row offers NDIS drivers. The disks get no
/// configuration files.
void MakeCatalogue(const ApplicationFolder& folder, int count);

/// Makes a store of nothing but the NDIS drivers "DRV0001" to `count`: copies of one cabinet that describes
/// itself as kLoadDescription.
void MakeDrivers(const ApplicationFolder& folder, int count);

inline constexpr const char* kLoadDescription = "One of many adapters";

/// Makes files of a few bytes, each its own path on the disk, one hundred to a folder, for the root of a disk
/// takes no more than 240 names. Returns the lines that bring them into [Copy_Files].
std::vector<std::string> MakeFiles(const ApplicationFolder& folder, int count);

/// The path on the disk of the file with this number, counted from 1: "D0001\F0001.TXT".
std::string PathOfFile(int number);

}  // namespace velbooter::e2e
