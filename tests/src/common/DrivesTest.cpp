#include "src/common/Drives.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class FreeSpace : public ::testing::Test {
 protected:
    ApplicationFolder Folder;
};

TEST_F(FreeSpace, GetDriveFreeSpaceMultipliesIn32Bits) {
    DWORD sectors, bytes, freeClusters, clusters;
    ASSERT_TRUE(
        GetDiskFreeSpaceA(Folder.Path().substr(0, 3).c_str(), &sectors, &bytes, &freeClusters, &clusters));
    const double product = 1.0 * sectors * bytes * freeClusters;
    if (product > 2147483647.0) {
        try {
            GetDriveFreeSpace(Folder.Path());
            ADD_FAILURE() << "no overflow";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(kOverflow, error.Number);
        }
    } else {
        EXPECT_NEAR(product, GetDriveFreeSpace(Folder.Path()), 50e6) << "other programs use the disk too";
    }
}

TEST_F(FreeSpace, GetDriveFreeSpaceOfADriveThatIsNotThereIsMinusOne) {
    EXPECT_EQ(-1, GetDriveFreeSpace("Q:\\x"));
    EXPECT_EQ(-1, GetDriveFreeSpace(""));
}

}  // namespace
}  // namespace velbooter::testing
