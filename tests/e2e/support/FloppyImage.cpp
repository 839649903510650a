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

std::string WithoutTrailingBlanks(std::string text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

std::string ShortName(const std::string& entry) {
    const std::string name = WithoutTrailingBlanks(entry.substr(0, 8));
    const std::string extension = WithoutTrailingBlanks(entry.substr(8, 3));
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
    ReadFolder(bytes_.substr(rootStart, rootBytes), "");
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

std::string FloppyImage::Chain(std::uint32_t cluster) const {
    std::string contents;
    for (size_t count = 0; cluster != 0 && cluster < kEndOfChain; cluster = NextCluster(cluster), ++count) {
        if (cluster < kFirstCluster || cluster >= kFirstCluster + clusters_ || count > clusters_) {
            throw HarnessFailure("the image has a broken chain of clusters");
        }
        contents += bytes_.substr(dataStart_ + (cluster - kFirstCluster) * clusterBytes_, clusterBytes_);
    }
    return contents;
}

void FloppyImage::ReadFolder(const std::string& entries, const std::string& prefix) {
    for (size_t at = 0; at < entries.size() && entries[at] != '\0'; at += kEntryBytes) {
        const std::string entry = entries.substr(at, kEntryBytes);
        const auto attributes = static_cast<std::uint8_t>(entry[11]);
        const bool removed = entry[0] == '\xE5';
        if (removed || attributes == kLongName || entry[0] == '.') continue;
        if ((attributes & kLabel) != 0) {
            label_ = WithoutTrailingBlanks(entry.substr(0, 11));
            continue;
        }
        const std::string path = prefix + ShortName(entry);
        std::string contents = Chain(LittleEndian(entry, 26, 2));
        if ((attributes & kFolder) != 0) {
            ReadFolder(contents, path + "\\");
            continue;
        }
        const std::uint32_t size = LittleEndian(entry, 28, 4);
        if (contents.size() < size) throw HarnessFailure(path + " is shorter in the image than it says");
        contents.resize(size);
        files_[path] = contents;
        attributes_[path] = attributes;
    }
}

}  // namespace velbooter::e2e
