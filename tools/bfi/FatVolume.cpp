#include "tools/bfi/FatVolume.h"

#include <algorithm>

#include "tools/shared/ByteOrder.h"

namespace tools::bfi {
namespace {

constexpr std::uint32_t kEndOfChain = 0xFFF;
// Bytes. Enough for many small files, and few enough for a processor's cache.
constexpr std::size_t kGatherBytes = 32UL * 1024;

}  // namespace

FatVolume::FatVolume(const floppy::Geometry& geometry, OutputFile& image)
    : geometry_(geometry),
      image_(image),
      head_(geometry.DataSector() * floppy::kSectorBytes),
      gathered_(kGatherBytes) {
    SetFatEntry(0, 0xF00U | geometry.MediaByte);
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

void FatVolume::Store(std::uint32_t cluster, std::size_t size,
                      const std::function<void(std::span<std::uint8_t>)>& fill) {
    const auto wholeBytes = static_cast<std::size_t>(geometry_.ClustersFor(size)) * geometry_.ClusterBytes();
    const bool follows = OffsetOf(cluster) == gatheredOffset_ + gatheredBytes_;
    if (!follows || gatheredBytes_ + wholeBytes > gathered_.size()) {
        WriteGathered();
        gatheredOffset_ = OffsetOf(cluster);
        if (wholeBytes > gathered_.size()) gathered_.resize(wholeBytes);
    }
    const auto place = std::span(gathered_).subspan(gatheredBytes_, wholeBytes);
    fill(place.first(size));
    contents_.Add(place.first(size));
    std::fill(place.begin() + static_cast<std::ptrdiff_t>(size), place.end(), std::uint8_t{0});
    gatheredBytes_ += wholeBytes;
}

std::span<std::uint8_t> FatVolume::RootDirectory() {
    return std::span(head_).subspan(geometry_.RootSector() * floppy::kSectorBytes,
                                    geometry_.RootEntries * floppy::kDirectoryEntryBytes);
}

void FatVolume::Finish(const BootSector& bootSector) {
    WriteGathered();
    const auto firstFat = head_.begin() + floppy::kReservedSectors * floppy::kSectorBytes;
    const auto fatBytes = static_cast<std::ptrdiff_t>(geometry_.SectorsPerFat * floppy::kSectorBytes);
    std::copy(firstFat, firstFat + fatBytes, firstFat + fatBytes);
    std::copy(bootSector.begin(), bootSector.end(), head_.begin());
    contents_.Add(head_);
    SetSerialNumber(head_, contents_.Value());
    image_.Resize(geometry_.ImageBytes());
    image_.WriteAt(0, head_);
}

std::uint64_t FatVolume::OffsetOf(std::uint32_t cluster) const {
    return head_.size() + (cluster - floppy::kFirstCluster) * geometry_.ClusterBytes();
}

void FatVolume::WriteGathered() {
    image_.WriteAt(gatheredOffset_, std::span(gathered_).first(gatheredBytes_));
    gatheredBytes_ = 0;
}

// Entries are 12 bits wide: two share three bytes.
void FatVolume::SetFatEntry(std::uint32_t cluster, std::uint32_t value) {
    std::uint8_t* const pair =
        head_.data() + floppy::kReservedSectors * floppy::kSectorBytes + cluster + cluster / 2;
    const std::uint32_t old = GetU16(pair);
    PutU16(pair, cluster % 2 == 0 ? (old & 0xF000U) | value : (old & 0x000FU) | (value << 4));
}

}  // namespace tools::bfi
