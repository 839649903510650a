#pragma once
// A floppy image as the tests of the whole program compare it.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace velbooter::e2e {

/// An image that has been read as a whole. Long names are ignored: a file is identified by its 8.3 name.
class FloppyImage {
 public:
    /// Reads the image at `path`. Throws HarnessFailure when it is not sound.
    explicit FloppyImage(const std::string& path);

    /// The size of the image in bytes.
    size_t Size() const { return bytes_.size(); }

    /// How many bytes of the data area are taken, in whole clusters.
    size_t UsedBytes() const { return usedBytes_; }

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
    std::string bytes_;
    size_t usedBytes_ = 0;
    std::string label_;
    std::map<std::string, std::string> files_;
    std::map<std::string, std::uint8_t> attributes_;
    std::vector<size_t> entryPlaces_;
};

}  // namespace velbooter::e2e
