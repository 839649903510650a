#include "src/common/Handle.h"

#include <gtest/gtest.h>

namespace velbooter::testing {
namespace {

TEST(Handles, NoneIsNullForAKernelObjectAndMinusOneForAFileAndASearch) {
    EXPECT_EQ(nullptr, KernelHandle().Get());
    EXPECT_EQ(handles::MinusOne(), FileHandle().Get());
    EXPECT_EQ(handles::MinusOne(), FindHandle().Get());
}

TEST(Handles, AFileThatIsNotThereGivesNone) {
    EXPECT_FALSE(OpenExistingFile("Z:\\no such folder\\no such file", 0));
}

}  // namespace
}  // namespace velbooter::testing
