#include "base/UniqueHandle.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace base::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The values that were closed since the test began, in this order.
std::vector<int> closed;

// Numbers from 0 on, like descriptors; minus one stands for none.
struct Number {
    using Value = int;
    static Value None() { return -1; }
    static void Close(Value number) { closed.push_back(number); }
};

// Pointers; null stands for none.
struct Pointer {
    using Value = const int*;
    static Value None() { return nullptr; }
    static void Close(Value pointer) { closed.push_back(*pointer); }
};

using NumberHandle = UniqueHandle<Number>;
using PointerHandle = UniqueHandle<Pointer>;

static_assert(!std::is_copy_constructible_v<NumberHandle> && !std::is_copy_assignable_v<NumberHandle>);
static_assert(!std::is_constructible_v<NumberHandle, PointerHandle> &&
              !std::is_assignable_v<PointerHandle&, NumberHandle>);
static_assert(!std::is_convertible_v<int, NumberHandle>, "owning is said in words");

class UniqueHandleTest : public ::testing::Test {
 protected:
    UniqueHandleTest() { closed.clear(); }
};

TEST_F(UniqueHandleTest, WhatIsOwnedIsClosedOnce) {
    {
        const NumberHandle handle(7);
        EXPECT_TRUE(handle);
        EXPECT_EQ(7, handle.Get());
        EXPECT_THAT(closed, IsEmpty());
    }
    EXPECT_THAT(closed, ElementsAre(7));
}

TEST_F(UniqueHandleTest, NothingIsNotClosed) {
    const int zero = 0;
    {
        const NumberHandle none;
        const NumberHandle invalid(-1);
        const PointerHandle null;
        EXPECT_FALSE(none || invalid || null);
    }
    EXPECT_THAT(closed, IsEmpty());
    {
        const NumberHandle first(0);
        const PointerHandle pointer(&zero);
        EXPECT_TRUE(first && pointer) << "the descriptor 0 is one";
    }
    EXPECT_THAT(closed, ElementsAre(0, 0));
}

TEST_F(UniqueHandleTest, MovingLeavesNothingBehind) {
    NumberHandle first(1);
    NumberHandle second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_EQ(1, second.Get());
    NumberHandle third(3);
    third = std::move(second);
    EXPECT_FALSE(second);
    EXPECT_EQ(1, third.Get());
    EXPECT_THAT(closed, ElementsAre(3)) << "what the target owned before";
}

TEST_F(UniqueHandleTest, MovingToItselfChangesNothing) {
    NumberHandle handle(4);
    NumberHandle& same = handle;
    handle = std::move(same);
    EXPECT_EQ(4, handle.Get());
    EXPECT_THAT(closed, IsEmpty());
}

TEST_F(UniqueHandleTest, ResettingClosesAndOwnsTheNextOne) {
    NumberHandle handle(5);
    handle.Reset(6);
    EXPECT_EQ(6, handle.Get());
    handle.Reset(6);
    EXPECT_THAT(closed, ElementsAre(5)) << "the same value stays open";
    handle.Reset();
    EXPECT_FALSE(handle);
    handle.Reset();
    EXPECT_THAT(closed, ElementsAre(5, 6));
}

TEST_F(UniqueHandleTest, WhatIsReleasedStaysOpen) {
    {
        NumberHandle handle(8);
        EXPECT_EQ(8, handle.Release());
        EXPECT_FALSE(handle);
        EXPECT_EQ(-1, handle.Release());
    }
    EXPECT_THAT(closed, IsEmpty());
}

}  // namespace
}  // namespace base::testing
