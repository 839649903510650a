#include "console/BuiltImage.h"

#include <fstream>
#include <iterator>
#include <vector>

#include "floppy/SpaceNeeded.h"

namespace velbooter {

std::optional<DiskUse> UseOfImage(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> characters{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> image(characters.begin(), characters.end());
    const floppy::Geometry* const geometry = floppy::GeometryOfLength(image.size());
    if (geometry == nullptr) return std::nullopt;
    return DiskUse{floppy::UsedBytes(image, *geometry),
                   std::uint64_t{geometry->DataClusters()} * geometry->ClusterBytes()};
}

}  // namespace velbooter
