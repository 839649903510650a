#pragma once
// Creates great numbers of what a user can add: disks, drivers, files.

#include <string>
#include <vector>

#include "tests/e2e/support/DemoFolder.h"

namespace velbooter::e2e {

/// Returns a number as four digits, so that names sort by their numbers.
std::string FourDigits(int number);

/// Creates a catalogue of the disks "disk0001" to `count`. The custom row offers NDIS drivers. The disks get
/// no configuration files.
void MakeCatalogue(const DemoFolder& folder, int count);

/// Creates a store of only the NDIS drivers "DRV0001" to `count`: copies of one cabinet with the description
/// kLoadDescription.
void MakeDrivers(const DemoFolder& folder, int count);

inline constexpr const char* kLoadDescription = "One of many adapters";

/// Creates files of a few bytes, each of which contains its path on the disk, a hundred in each folder,
/// because the root of a disk has space for no more than 240 names. Returns the lines of [Copy_Files] that
/// copy them.
std::vector<std::string> MakeFiles(const DemoFolder& folder, int count);

/// Returns the path on the disk of the file with this number, counted from 1: "D0001\F0001.TXT".
std::string PathOfFile(int number);

}  // namespace velbooter::e2e
