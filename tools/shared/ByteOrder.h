#pragma once
// The one place where the tools turn numbers into little-endian bytes and back. Every on-disk field of a FAT
// file system and of a cabinet is little-endian and may be unaligned, so no struct is ever laid over a
// buffer. Nothing is checked here: the caller has the bytes that a function reads or writes.

#include <cstdint>
#include <vector>

namespace tools {

/// Stores the low 16 bits of `value` at `bytes[0..1]`, low byte first.
inline void PutU16(std::uint8_t* bytes, std::uint32_t value) {
    bytes[0] = static_cast<std::uint8_t>(value);
    bytes[1] = static_cast<std::uint8_t>(value >> 8);
}

/// Stores the 32 bits of `value` at `bytes[0..3]`, low byte first.
inline void PutU32(std::uint8_t* bytes, std::uint32_t value) {
    PutU16(bytes, value & 0xFFFFU);
    PutU16(bytes + 2, value >> 16);
}

/// Returns the 16-bit number at `bytes[0..1]`, whose low byte comes first; so do the next two for 32 and 64
/// bits.
inline std::uint16_t GetU16(const std::uint8_t* bytes) {
    return static_cast<std::uint16_t>(bytes[0] | (bytes[1] << 8));
}

/// Returns the 32-bit number at `bytes[0..3]`.
inline std::uint32_t GetU32(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(GetU16(bytes)) | (static_cast<std::uint32_t>(GetU16(bytes + 2)) << 16);
}

/// Returns the 64-bit number at `bytes[0..7]`.
inline std::uint64_t GetU64(const std::uint8_t* bytes) {
    return GetU32(bytes) | (static_cast<std::uint64_t>(GetU32(bytes + 4)) << 32);
}

/// Appends the low 16 bits of `value` to `buffer`, low byte first.
inline void AppendU16(std::vector<std::uint8_t>& buffer, std::uint32_t value) {
    buffer.resize(buffer.size() + 2);
    PutU16(buffer.data() + buffer.size() - 2, value);
}

/// Appends the 32 bits of `value` to `buffer`, low byte first.
inline void AppendU32(std::vector<std::uint8_t>& buffer, std::uint32_t value) {
    buffer.resize(buffer.size() + 4);
    PutU32(buffer.data() + buffer.size() - 4, value);
}

}  // namespace tools
