#include "tests/e2e/support/FloppyImage.h"

#include <algorithm>
#include <stdexcept>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/HarnessFailure.h"
#include "tests/tools/bfi/FatReader.h"

namespace velbooter::e2e {

namespace {

tools::bfi::testing::FatImage Sound(const std::string& path, const std::string& bytes) {
    try {
        return tools::bfi::testing::ReadFatImage({bytes.begin(), bytes.end()});
    } catch (const std::runtime_error& error) {
        throw HarnessFailure(path + ": " + error.what());
    }
}

}  // namespace

FloppyImage::FloppyImage(const std::string& path) : bytes_(ReadFileAt(path)) {
    const tools::bfi::testing::FatImage image = Sound(path, bytes_);
    usedBytes_ = size_t{image.Clusters - image.FreeClusters} * image.ClusterBytes;
    entryPlaces_ = image.EntryPlaces;
    for (const tools::bfi::testing::FatEntry& entry : image.Entries) {
        if (entry.IsLabel()) {
            label_ = entry.Path.substr(0, entry.Path.find_last_not_of(' ') + 1);
        } else if (!entry.IsFolder()) {
            std::string name = entry.Path;
            std::replace(name.begin(), name.end(), '/', '\\');
            files_[name].assign(entry.Content.begin(), entry.Content.end());
            attributes_[name] = entry.Attributes;
        }
    }
}

std::uint8_t FloppyImage::Attributes(const std::string& path) const {
    const auto found = attributes_.find(path);
    return found == attributes_.end() ? std::uint8_t{0} : found->second;
}

std::string FloppyImage::BytesWithoutTimes() const {
    std::string bytes = bytes_;
    bytes.replace(39, 4, 4, '\0');  // the serial number
    for (const size_t place : entryPlaces_) {
        bytes.replace(place + 13, 7, 7, '\0');  // created, last read
        bytes.replace(place + 22, 4, 4, '\0');  // last written
    }
    return bytes;
}

}  // namespace velbooter::e2e
