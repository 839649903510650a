#include "tests/e2e/support/FloppyImage.h"

#include "tests/e2e/support/ApplicationFolder.h"
#include "tests/e2e/support/HarnessFailure.h"

namespace velbooter::e2e {

namespace {

constexpr size_t kEntryBytes = 32;
constexpr std::uint8_t kLabel = 0x08;
constexpr std::uint8_t kFolder = 0x10;
constexpr std::uint8_t kLongName = 0x0F;
constexpr std::uint32_t kFirstCluster = 2;
constexpr std::uint32_t kEndOfChain = 0xFF8;

std::string WithoutTrailingSpaces(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

std::string ShortName(const std::string& entry) {
    const std::string name = WithoutTrailingSpaces(entry.substr(0, 8));
    const std::string extension = WithoutTrailingSpaces(entry.substr(8, 3));
    return extension.empty() ? name : name + "." + extension;
}

std::uint32_t LittleEndian(const std::string& bytes, size_t offset, size_t length) {
    std::uint32_t number = 0;
    for (size_t i = length; i-- > 0;) number = number << 8 | static_cast<std::uint8_t>(bytes.at(offset + i));
    return number;
}

}  // namespace

FloppyImage::FloppyImage(const std::string& path) : bytes_(ReadFileAt(path)) {
    if (bytes_.size() < 512) throw HarnessFailure(path + " is too short for a boot sector");
    const size_t sectorBytes = Number(11, 2);
    const size_t sectors = Number(19, 2);
    if (sectorBytes != 512 || sectors * sectorBytes != bytes_.size()) {
        throw HarnessFailure(path + " does not hold the volume that its boot sector describes");
    }
    const size_t fatBytes = Number(22, 2) * sectorBytes;
    clusterBytes_ = Number(13, 1) * sectorBytes;
    fatStart_ = Number(14, 2) * sectorBytes;
    const size_t rootStart = fatStart_ + Number(16, 1) * fatBytes;
    const size_t rootBytes = Number(17, 2) * kEntryBytes;
    dataStart_ = rootStart + rootBytes;
    clusters_ = (bytes_.size() - dataStart_) / clusterBytes_;
    ReadFolder({rootStart}, rootBytes, "");
}

std::uint8_t FloppyImage::Attributes(const std::string& path) const {
    const auto found = attributes_.find(path);
    return found == attributes_.end() ? std::uint8_t{0} : found->second;
}

std::uint32_t FloppyImage::Number(size_t offset, size_t length) const {
    return LittleEndian(bytes_, offset, length);
}

// Two entries of the table share three bytes.
std::uint32_t FloppyImage::NextCluster(std::uint32_t cluster) const {
    const std::uint32_t pair = Number(fatStart_ + cluster + cluster / 2, 2);
    return cluster % 2 == 0 ? pair & 0xFFF : pair >> 4;
}

size_t FloppyImage::UsedBytes() const {
    size_t used = 0;
    for (size_t i = 0; i < clusters_; ++i) {
        if (NextCluster(static_cast<std::uint32_t>(kFirstCluster + i)) != 0) used += clusterBytes_;
    }
    return used;
}

// Returns where the clusters of a chain begin in the image, in bytes.
std::vector<size_t> FloppyImage::Chain(std::uint32_t cluster) const {
    std::vector<size_t> places;
    for (; cluster != 0 && cluster < kEndOfChain; cluster = NextCluster(cluster)) {
        const bool isLoop = places.size() > clusters_;
        if (cluster < kFirstCluster || cluster >= kFirstCluster + clusters_ || isLoop) {
            throw HarnessFailure("the image has a broken chain of clusters");
        }
        places.push_back(dataStart_ + (cluster - kFirstCluster) * clusterBytes_);
    }
    return places;
}

void FloppyImage::ReadFolder(const std::vector<size_t>& blocks, size_t blockBytes,
                             const std::string& prefix) {
    for (const size_t block : blocks) {
        for (size_t place = block; place < block + blockBytes; place += kEntryBytes) {
            if (bytes_.at(place) == '\0') return;
            ReadEntry(place, prefix);
        }
    }
}

void FloppyImage::ReadEntry(size_t place, const std::string& prefix) {
    const std::string entry = bytes_.substr(place, kEntryBytes);
    const auto attributes = static_cast<std::uint8_t>(entry[11]);
    const bool removed = entry[0] == '\xE5';
    if (removed || attributes == kLongName) return;
    entries_.push_back(place);
    if (entry[0] == '.') return;
    if ((attributes & kLabel) != 0) {
        label_ = WithoutTrailingSpaces(entry.substr(0, 11));
        return;
    }
    const std::string path = prefix + ShortName(entry);
    const std::vector<size_t> clusters = Chain(LittleEndian(entry, 26, 2));
    if ((attributes & kFolder) != 0) {
        ReadFolder(clusters, clusterBytes_, path + "\\");
        return;
    }
    std::string contents;
    for (const size_t cluster : clusters) contents += bytes_.substr(cluster, clusterBytes_);
    const std::uint32_t size = LittleEndian(entry, 28, 4);
    if (contents.size() < size) throw HarnessFailure(path + " is shorter in the image than it says");
    contents.resize(size);
    files_[path] = contents;
    attributes_[path] = attributes;
}

std::string FloppyImage::BytesWithoutTimes() const {
    std::string bytes = bytes_;
    bytes.replace(39, 4, 4, '\0');  // the serial number
    for (const size_t entry : entries_) {
        bytes.replace(entry + 13, 7, 7, '\0');  // created, last read
        bytes.replace(entry + 22, 4, 4, '\0');  // last written
    }
    return bytes;
}

}  // namespace velbooter::e2e
