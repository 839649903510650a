#include "tools/bfi/FatVolume.h"

#include <zlib.h>

#include <algorithm>

#include "tools/shared/ByteOrder.h"

namespace tools::bfi {
namespace {

constexpr std::uint32_t kEndOfChain = 0xFFF;

}  // namespace

FatVolume::FatVolume(const Geometry& geometry) : geometry_(geometry), image_(geometry.ImageBytes()) {
    SetFatEntry(0, 0xF00U | kMediaByte);
    SetFatEntry(1, kEndOfChain);
}

std::uint32_t FatVolume::Allocate(std::uint64_t bytes) {
    if (bytes == 0) return 0;
    const std::uint32_t first = nextCluster_;
    nextCluster_ += static_cast<std::uint32_t>(geometry_.ClustersFor(bytes));
    for (std::uint32_t cluster = first; cluster + 1 < nextCluster_; ++cluster)
        SetFatEntry(cluster, cluster + 1);
    SetFatEntry(nextCluster_ - 1, kEndOfChain);
    return first;
}

std::span<std::uint8_t> FatVolume::Data(std::uint32_t cluster, std::size_t bytes) {
    const std::size_t start =
        geometry_.DataSector() * kSectorBytes + (cluster - kFirstCluster) * geometry_.ClusterBytes();
    return std::span(image_).subspan(start, bytes);
}

std::span<std::uint8_t> FatVolume::RootDirectory() {
    return std::span(image_).subspan(geometry_.RootSector() * kSectorBytes,
                                     geometry_.RootEntries * kDirectoryEntryBytes);
}

const std::vector<std::uint8_t>& FatVolume::Finish(const BootSector& bootSector) {
    const auto firstFat = image_.begin() + kReservedSectors * kSectorBytes;
    const auto fatBytes = static_cast<std::ptrdiff_t>(geometry_.SectorsPerFat * kSectorBytes);
    std::copy(firstFat, firstFat + fatBytes, firstFat + fatBytes);
    std::copy(bootSector.begin(), bootSector.end(), image_.begin());
    SetSerialNumber(image_, static_cast<std::uint32_t>(crc32_z(0, image_.data(), image_.size())));
    return image_;
}

// Entries are 12 bits wide: two share three bytes.
void FatVolume::SetFatEntry(std::uint32_t cluster, std::uint32_t value) {
    std::uint8_t* const pair = image_.data() + kReservedSectors * kSectorBytes + cluster + cluster / 2;
    const std::uint32_t old = tools::GetU16(pair);
    tools::PutU16(pair, cluster % 2 == 0 ? (old & 0xF000U) | value : (old & 0x000FU) | (value << 4));
}

}  // namespace tools::bfi
