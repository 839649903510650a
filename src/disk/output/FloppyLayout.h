#pragma once
// What a set of files takes on a floppy, counted as our image tool lays them out: files and folders in whole
// clusters, and every name in the directory of its folder. This is an estimate; the image tool has the final
// say.

#include <cstdint>
#include <map>
#include <string>

#include "floppy/Geometry.h"
#include "floppy/SpaceNeeded.h"

namespace velbooter {

class FloppyLayout {
 public:
    /// An empty disk of the format `geometry`, which outlives the layout.
    explicit FloppyLayout(const floppy::Geometry& geometry) : geometry_(geometry) {}

    /// Puts a file of `bytes` bytes at `path` ("bin\\a.cab"), together with the folders on that path. Of
    /// several files at one path, whatever their case, the last counts, under the name of the first.
    void Add(const std::string& path, std::uint64_t bytes);

    /// Returns how many bytes of the disk's data area are taken, in whole clusters.
    std::uint64_t Bytes() const;

    /// Returns whether everything fits, the names in the root directory included.
    bool Fits() const;

 private:
    void AddToFolder(const std::string& path);
    floppy::SpaceNeeded Sum() const;

    const floppy::Geometry& geometry_;
    // By path in upper case: the bytes of a file, and the directory entries of the names in a folder ("" is
    // the root).
    std::map<std::string, std::uint64_t> files_;
    std::map<std::string, std::size_t> folders_;
};

}  // namespace velbooter
