#include "tools/bfi/BootSector.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/shared/ByteOrder.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/ToolError.h"

namespace tools::bfi {
namespace {

constexpr std::size_t kDescriptionStart = 0x0B;
constexpr std::size_t kCodeStart = 0x3E;
constexpr std::size_t kSignatureStart = 0x1FE;
constexpr std::size_t kSerialStart = 0x27;
constexpr std::uint8_t kShortJump = 0xEB;
constexpr std::uint8_t kNearJump = 0xE9;
constexpr std::uint8_t kNop = 0x90;
constexpr std::uint8_t kExtendedSignature = 0x29;

// DOS believes the description only after one of these two jumps.
bool JumpsOverDescription(const BootSector& sector) {
    std::size_t target = 0;
    if (sector[0] == kShortJump && sector[2] == kNop && sector[1] < 0x80) target = sector[1] + 2U;
    if (sector[0] == kNearJump) target = GetU16(sector.data() + 1) + 3U;
    return target >= kCodeStart && target < kSignatureStart;
}

}  // namespace

BootSector ReadBootSector(const std::filesystem::path& file) {
    const std::string name = Utf8FromPath(file);
    if (KindOf(file) == FileKind::Missing) throw ToolError(name + ": this boot sector file does not exist");
    if (KindOf(file) == FileKind::Folder || KindOf(file) == FileKind::Special)
        throw ToolError(name + ": is not a boot sector file");
    // One byte more than needed, to notice a longer file.
    std::array<std::uint8_t, floppy::kSectorBytes + 1> bytes{};
    if (InputFile(file).Read(bytes) != floppy::kSectorBytes)
        throw ToolError(name + ": a boot sector file must be exactly 512 bytes long");
    BootSector sector{};
    std::copy(bytes.begin(), bytes.end() - 1, sector.begin());
    if (sector[kSignatureStart] != 0x55 || sector[kSignatureStart + 1] != 0xAA)
        throw ToolError(name + ": is not a boot sector: it does not end with the bytes 55 AA");
    if (!JumpsOverDescription(sector))
        throw ToolError(
            name + ": is not a DOS boot sector: it does not begin with a jump over the disk's description");
    return sector;
}

BootSector DescribeDisk(const BootSector& code, const floppy::Geometry& geometry,
                        const floppy::ShortName& label) {
    BootSector sector = code;
    std::fill(sector.begin() + kDescriptionStart, sector.begin() + kCodeStart, std::uint8_t{0});
    std::uint8_t* const bytes = sector.data();
    PutU16(bytes + 0x0B, floppy::kSectorBytes);
    bytes[0x0D] = static_cast<std::uint8_t>(geometry.SectorsPerCluster);
    PutU16(bytes + 0x0E, floppy::kReservedSectors);
    bytes[0x10] = floppy::kFatCopies;
    PutU16(bytes + 0x11, geometry.RootEntries);
    PutU16(bytes + 0x13, geometry.TotalSectors());
    bytes[0x15] = geometry.MediaByte;
    PutU16(bytes + 0x16, geometry.SectorsPerFat);
    PutU16(bytes + 0x18, geometry.SectorsPerTrack);
    PutU16(bytes + 0x1A, geometry.Heads);
    bytes[0x26] = kExtendedSignature;
    std::copy(label.begin(), label.end(), bytes + 0x2B);
    constexpr std::string_view kFileSystem = "FAT12   ";
    std::copy(kFileSystem.begin(), kFileSystem.end(), bytes + 0x36);
    return sector;
}

void SetSerialNumber(std::span<std::uint8_t> image, std::uint32_t serial) {
    PutU32(image.data() + kSerialStart, serial);
}

}  // namespace tools::bfi
