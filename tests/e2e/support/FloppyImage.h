#pragma once
// Reads a raw FAT12 floppy image back, independently of the tool that wrote it.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace velbooter::e2e {

/// An image that has been read as a whole. Long names are ignored: a file is identified by its 8.3 name.
class FloppyImage {
 public:
    /// Reads the image at `path`. Throws HarnessFailure when it is not a FAT12 volume that fills its file, or
    /// when a file's chain of clusters is broken.
    explicit FloppyImage(const std::string& path);

    /// The size of the image in bytes.
    size_t Size() const { return bytes_.size(); }

    /// How many bytes of the data area are taken, in whole clusters.
    size_t UsedBytes() const;

    /// The volume label in the root directory.
    const std::string& Label() const { return label_; }

    /// The contents of all files by path, as in "BIN\MENU.BAT".
    const std::map<std::string, std::string>& Files() const { return files_; }

    /// The whole image with zeros for the times and dates of all directory entries and for the serial
    /// number, which is computed from all bytes.
    std::string BytesWithoutTimes() const;

    /// The attribute byte of a file; 0 when there is no such file.
    std::uint8_t Attributes(const std::string& path) const;

 private:
    std::uint32_t Number(size_t offset, size_t length) const;
    std::uint32_t NextCluster(std::uint32_t cluster) const;
    std::vector<size_t> Chain(std::uint32_t cluster) const;
    void ReadFolder(const std::vector<size_t>& blocks, size_t blockBytes, const std::string& prefix);
    void ReadEntry(size_t place, const std::string& prefix);

    std::string bytes_;
    size_t fatStart_ = 0;
    size_t dataStart_ = 0;
    size_t clusterBytes_ = 0;
    size_t clusters_ = 0;
    std::string label_;
    std::map<std::string, std::string> files_;
    std::map<std::string, std::uint8_t> attributes_;
    std::vector<size_t> entries_;  ///< where the entries of all folders begin, those of long names left out
};

}  // namespace velbooter::e2e
