#pragma once
// Sector 0 of an image: code from the caller's file, and the table that describes the disk to DOS from us.

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

#include "floppy/Geometry.h"
#include "floppy/ShortName.h"

namespace tools::bfi {

using BootSector = std::array<std::uint8_t, floppy::kSectorBytes>;

/// Reads a boot sector file. Throws ToolError naming the file when it cannot be read, is not exactly 512
/// bytes long, lacks the signature 55 AA, or does not begin with a jump over the bytes 0 to 3Dh, where the
/// description of the disk goes.
BootSector ReadBootSector(const std::filesystem::path& file);

/// Returns `code` with the description of the disk filled in; the serial number is 0. The jump, the maker's
/// name and the code stay as they are.
BootSector DescribeDisk(const BootSector& code, const floppy::Geometry& geometry,
                        const floppy::ShortName& label);

/// Stores the serial number in an image (or a boot sector alone).
void SetSerialNumber(std::span<std::uint8_t> image, std::uint32_t serial);

}  // namespace tools::bfi
