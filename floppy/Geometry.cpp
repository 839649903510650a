#include "floppy/Geometry.h"

namespace floppy {
namespace {

constexpr Geometry kFloppy144{"1.44 MB", 2880, 1, 224, 9, 18, 2};
constexpr Geometry kFloppy288{"2.88 MB", 5760, 2, 240, 9, 36, 2};

static_assert(kFloppy144.DataSector() == 33 && kFloppy144.DataClusters() == 2847);
static_assert(kFloppy288.DataSector() == 34 && kFloppy288.DataClusters() == 2863);

}  // namespace

const Geometry* GeometryOfType(const std::string& type) {
    if (type == "144") return &kFloppy144;
    if (type == "288") return &kFloppy288;
    return nullptr;
}

}  // namespace floppy
