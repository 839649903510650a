#include "floppy/SpaceNeeded.h"

#include <algorithm>
#include <limits>

namespace floppy {
namespace {

// Up to this number of clusters neither the sum nor the bytes in them overflow 64 bits.
constexpr std::uint64_t kMostClusters = std::numeric_limits<std::uint64_t>::max() >> 16;

}  // namespace

void SpaceNeeded::AddFile(std::uint64_t bytes) {
    // The first summand is below 2^48 and the second below 2^55, as a cluster has 512 bytes at least.
    clusters_ = std::min(clusters_ + geometry_.ClustersFor(bytes), kMostClusters);
}

void SpaceNeeded::AddFolder(std::size_t slots) {
    AddFile(BytesOfFolder(slots));
}

std::uint64_t SpaceNeeded::MissingBytes() const {
    const std::uint64_t present = geometry_.DataClusters();
    return clusters_ > present ? (clusters_ - present) * geometry_.ClusterBytes() : 0;
}

bool SpaceNeeded::IsBeyondCounting() const {
    return clusters_ == kMostClusters;
}

std::uint64_t UsedBytes(std::span<const std::uint8_t> image, const Geometry& geometry) {
    const auto fat = image.subspan(kReservedSectors * kSectorBytes, geometry.SectorsPerFat * kSectorBytes);
    std::uint64_t used = 0;
    for (std::size_t cluster = kFirstCluster; cluster < geometry.DataClusters() + kFirstCluster; ++cluster) {
        // Two entries of 12 bits share three bytes.
        const std::size_t place = cluster + cluster / 2;
        const unsigned pair = fat[place] | static_cast<unsigned>(fat[place + 1]) << 8;
        const unsigned entry = cluster % 2 == 0 ? pair & 0xFFF : pair >> 4;
        if (entry != 0) ++used;
    }
    return used * geometry.ClusterBytes();
}

}  // namespace floppy
