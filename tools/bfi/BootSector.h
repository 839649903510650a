#pragma once
// Sector 0 of an image: the code comes from the caller's file, the table that describes the disk to DOS (the
// BIOS parameter block, bytes 0Bh to 3Dh) from here. docs/formats/fat12.md lists its fields.

#include <array>
#include <cstdint>
#include <filesystem>
#include <span>

#include "floppy/Geometry.h"
#include "floppy/ShortName.h"

namespace tools::bfi {

/// One sector: the jump, the disk's description, the code, and the signature 55 AA in the last two bytes.
using BootSector = std::array<std::uint8_t, floppy::kSectorBytes>;

/// Reads a boot sector file. Throws ToolError naming the file when it cannot be read, is not exactly 512
/// bytes long, lacks the signature 55 AA, or does not begin with a jump over the bytes 0 to 3Dh, where the
/// description of the disk goes.
BootSector ReadBootSector(const std::filesystem::path& file);

/// Returns `code` with the description of the disk filled in: its layout from `geometry`, its label, the
/// file system's name; the serial number is 0. The jump, the maker's name (bytes 3 to 0Ah) and the code stay
/// as they are.
BootSector DescribeDisk(const BootSector& code, const floppy::Geometry& geometry,
                        const floppy::ShortName& label);

/// Stores the serial number at byte 27h of `image`, an image or a boot sector alone, which has at least that
/// sector.
void SetSerialNumber(std::span<std::uint8_t> image, std::uint32_t serial);

}  // namespace tools::bfi
