#include "src/common/Drives.h"

#include <windows.h>

#include <cstdint>
#include <limits>

#include "src/common/RuntimeError.h"

namespace velbooter {

namespace {

std::int32_t MultiplyWithOverflow(std::uint64_t left, std::uint64_t right, const std::string& drive) {
    const std::uint64_t limit = std::numeric_limits<std::int32_t>::max();
    if (left > limit || right > limit || left * right > limit) throw RuntimeError(kOverflow, drive);
    return static_cast<std::int32_t>(left * right);
}

}  // namespace

double GetDriveFreeSpace(const std::string& path) {
    const std::string root = path.substr(0, 1) + ":\\";
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD allClusters = 0;
    if (::GetDiskFreeSpaceA(root.c_str(), &sectorsPerCluster, &bytesPerSector, &freeClusters, &allClusters) ==
        0) {
        return -1;
    }
    const std::int32_t clusterBytes = MultiplyWithOverflow(bytesPerSector, sectorsPerCluster, root);
    return MultiplyWithOverflow(static_cast<std::uint64_t>(clusterBytes), freeClusters, root);
}

}  // namespace velbooter
