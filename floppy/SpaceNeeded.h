#pragma once
// What the files and folders of a disk take of it, and whether they fit. The image tool rejects a tree by
// this sum, and the program shows it while the user is still choosing, so that both count alike.

#include <cstddef>
#include <cstdint>
#include <span>

#include "floppy/Geometry.h"

namespace floppy {

/// Adds up one disk; the order of the calls does not matter.
class SpaceNeeded {
 public:
    /// An empty disk of the format `geometry`, which outlives the object. Its label takes a root entry.
    explicit SpaceNeeded(const Geometry& geometry) : geometry_(geometry) {}

    /// Adds the contents of a file of `bytes` bytes.
    void AddFile(std::uint64_t bytes);

    /// Adds the clusters of a folder below the root whose names take `slots` directory entries
    /// (SlotsOfName); its name in its parent is not counted here.
    void AddFolder(std::size_t slots);

    /// Adds `slots` entries to the root directory, whose sectors are not part of the data area.
    void AddRootNames(std::size_t slots) { rootSlots_ += slots; }

    /// Returns how many bytes of the data area are taken, in whole clusters; 2^48 - 1 clusters stand for any
    /// larger number, because a few sparse files can have more bytes than 64 bits count.
    std::uint64_t Bytes() const { return clusters_ * geometry_.ClusterBytes(); }

    /// Returns how many bytes the data area is too small by, in whole clusters; 0 when the files and folders
    /// fit.
    std::uint64_t MissingBytes() const;

    /// Returns whether there are so many clusters that Bytes() and MissingBytes() are only lower limits.
    bool IsBeyondCounting() const;

    /// Returns the number of entries of the root directory that are taken, the label's included.
    std::size_t RootSlots() const { return rootSlots_; }

    /// Returns whether everything fits: the data, and the names in the root directory.
    bool Fits() const { return rootSlots_ <= geometry_.RootEntries && MissingBytes() == 0; }

 private:
    const Geometry& geometry_;
    std::uint64_t clusters_ = 0;
    std::size_t rootSlots_ = 1;
};

/// Returns how many bytes of the data area the files and folders of a finished disk take, in whole clusters:
/// those that the first copy of its FAT marks as taken. `image` is the whole image, in the format `geometry`.
std::uint64_t UsedBytes(std::span<const std::uint8_t> image, const Geometry& geometry);

}  // namespace floppy
