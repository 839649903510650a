#pragma once
// The checksum of a cabinet's data records.

#include <cstdint>
#include <span>

namespace tools::cabarc {

/// Returns the checksum of a CFDATA record: of its payload and of the two size fields before it.
std::uint32_t BlockChecksum(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize);

}  // namespace tools::cabarc
