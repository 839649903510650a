#include "tools/shared/Handle.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace tools::testing {
namespace {

TEST(Handles, NoFileIsMinusOne) {
    EXPECT_FALSE(FileHandle());
#ifdef _WIN32
    EXPECT_EQ(reinterpret_cast<void*>(static_cast<std::intptr_t>(-1)), FileHandle().Get());
    EXPECT_FALSE(UniqueHandle<handles::Search>());
#else
    EXPECT_EQ(-1, FileHandle().Get());
#endif
}

}  // namespace
}  // namespace tools::testing
