#include "floppy/Geometry.h"

#include <algorithm>
#include <array>

namespace floppy {
namespace {

// From 360 KB to 2.88 MB: the disks as FORMAT of DOS leaves them, which the tables of mtools show, too.
//
// 1.68 MB is a 3.5" disk of high density with 21 sectors on a track, as on the distribution disks of
// Microsoft (DMF). Those have clusters of 2 KB and a root directory of 16 entries, because they hold a few
// large files that nobody adds to. This one is meant for a DOS with many small files, so it continues
// the 1.44 MB disk: one sector in a cluster, 224 entries. mformat comes to the same for 80 tracks, 2 heads
// and 21 sectors.
constexpr std::array<Geometry, 6> kGeometries{{
    {"144", "1.44 MB", 80, 2, 18, 1, 224, 9, 0xF0},
    {"288", "2.88 MB", 80, 2, 36, 2, 240, 9, 0xF0},
    {"360", "360 KB", 40, 2, 9, 2, 112, 2, 0xFD},
    {"720", "720 KB", 80, 2, 9, 2, 112, 3, 0xF9},
    {"1200", "1.2 MB", 80, 2, 15, 1, 224, 7, 0xF9},
    {"1680", "1.68 MB", 80, 2, 21, 1, 224, 10, 0xF0},
}};

// Number of entries of the allocation table that so many sectors hold.
constexpr std::uint32_t FatEntries(std::uint32_t sectors) {
    return static_cast<std::uint32_t>(sectors * kSectorBytes * 2 / 3);
}

// The first two entries of the table stand for no cluster.
static_assert(std::ranges::all_of(kGeometries, [](const Geometry& geometry) {
    const std::uint32_t entries = geometry.DataClusters() + kFirstCluster;
    return FatEntries(geometry.SectorsPerFat) >= entries && FatEntries(geometry.SectorsPerFat - 1) < entries;
}));
// With more clusters DOS takes the entries of the table for 16 bits wide.
static_assert(std::ranges::all_of(kGeometries, [](const Geometry& g) { return g.DataClusters() < 4085; }));
static_assert(std::ranges::all_of(kGeometries, [](const Geometry& geometry) {
    return geometry.RootEntries * kDirectoryEntryBytes % kSectorBytes == 0;
}));
// The boot sector reads the whole table in one call, which must not leave the track.
static_assert(std::ranges::all_of(kGeometries, [](const Geometry& geometry) {
    return kReservedSectors + geometry.SectorsPerFat <= geometry.SectorsPerTrack;
}));

}  // namespace

std::span<const Geometry> AllGeometries() {
    return kGeometries;
}

const Geometry* GeometryOfType(const std::string& type) {
    const auto found = std::ranges::find(kGeometries, type, &Geometry::Type);
    return found != kGeometries.end() ? &*found : nullptr;
}

const Geometry* GeometryOfLength(std::size_t bytes) {
    const auto found = std::ranges::find(kGeometries, bytes, &Geometry::ImageBytes);
    return found != kGeometries.end() ? &*found : nullptr;
}

}  // namespace floppy
