#include "tools/bfi/DirectoryTable.h"

#include <algorithm>
#include <array>

#include "floppy/Geometry.h"
#include "tools/shared/ByteOrder.h"

namespace tools::bfi {
namespace {

// Where the characters of a long name lie in an entry.
constexpr std::array<std::size_t, floppy::kUnitsPerLongNamePart> kUnitOffsets{1,  3,  5,  7,  9,  14, 16,
                                                                              18, 20, 22, 24, 28, 30};
constexpr std::uint8_t kLongNameAttribute = 0x0F;
constexpr std::size_t kLastPart = 0x40;

// The checksum of a short name that each part of its long name carries, by which a reader knows that they
// belong together.
std::uint8_t Checksum(const floppy::ShortName& name) {
    unsigned sum = 0;
    for (const char character : name)
        sum = ((sum << 7) + (sum >> 1) + static_cast<std::uint8_t>(character)) & 0xFF;
    return static_cast<std::uint8_t>(sum);
}

std::uint16_t UnitAt(const std::u16string& name, std::size_t index) {
    if (index < name.size()) return name[index];
    return index == name.size() ? 0 : 0xFFFF;
}

}  // namespace

std::span<std::uint8_t> DirectoryTable::Take() {
    const auto entry = free_.first(floppy::kDirectoryEntryBytes);
    free_ = free_.subspan(floppy::kDirectoryEntryBytes);
    return entry;
}

void DirectoryTable::Add(const floppy::ShortName& name, const EntryFacts& facts) {
    std::uint8_t* const entry = Take().data();
    std::copy(name.begin(), name.end(), entry);
    entry[11] = facts.Attributes;
    PutU16(entry + 22, facts.Modified.Time);
    PutU16(entry + 24, facts.Modified.Date);
    PutU16(entry + 26, facts.FirstCluster);
    PutU32(entry + 28, facts.Size);
}

void DirectoryTable::Add(const DirectoryName& name, const EntryFacts& facts) {
    const std::size_t parts = name.Slots() - 1;
    for (std::size_t part = parts; part > 0; --part) {
        std::uint8_t* const entry = Take().data();
        entry[0] = static_cast<std::uint8_t>(part == parts ? part | kLastPart : part);
        entry[11] = kLongNameAttribute;
        entry[13] = Checksum(name.Short);
        for (std::size_t i = 0; i < kUnitOffsets.size(); ++i)
            PutU16(entry + kUnitOffsets[i], UnitAt(name.Long, (part - 1) * kUnitOffsets.size() + i));
    }
    Add(name.Short, facts);
}

}  // namespace tools::bfi
