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

}  // namespace floppy
