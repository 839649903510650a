#include "console/BuiltImage.h"

#include <fstream>
#include <iterator>
#include <vector>

#include "floppy/SpaceNeeded.h"

namespace velbooter {

std::optional<DiskUse> UseOfImage(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<std::uint8_t> image{std::istreambuf_iterator<char>(file), {}};
    const floppy::Geometry* const geometry = floppy::GeometryOfLength(image.size());
    if (geometry == nullptr) return std::nullopt;
    return DiskUse{floppy::UsedBytes(image, *geometry),
                   std::uint64_t{geometry->DataClusters()} * geometry->ClusterBytes()};
}

}  // namespace velbooter
