// What the build's options promise: a memory error ends the program with a message, in every build.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <vector>

namespace tools::testing {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;

// Matches the last output of a program: the given report, or that of a sanitizer, which comes first where
// there is one.
auto Reports(const char* report) {
    return AnyOf(HasSubstr(report), HasSubstr("AddressSanitizer"), HasSubstr("runtime error"));
}

// Volatile, so that the compiler neither foresees the error nor removes it.
volatile std::size_t pastTheEnd = 64;
volatile char sink;

TEST(Hardening, AnIndexPastTheEndEndsTheProgram) {
    const std::vector<char> bytes(8);
    EXPECT_DEATH(sink = bytes[pastTheEnd], Reports("this->size()"));
}

TEST(Hardening, ACopyPastTheEndOfAnArrayEndsTheProgram) {
    const std::array<char, 64> source{};
    std::array<char, 8> target{};
    EXPECT_DEATH(
        {
            std::memcpy(target.data(), source.data(), pastTheEnd);
            sink = target[0];
        },
        Reports("buffer overflow detected"));
}

[[gnu::noinline]] void WritePastALocalArray() {
    std::array<char, 8> local{};
    volatile char* place = local.data();
    for (std::size_t i = 0; i < pastTheEnd; ++i) place[i] = 'x';
}

TEST(Hardening, AnOverwrittenStackFrameEndsTheProgram) {
    EXPECT_DEATH(WritePastALocalArray(), Reports("stack smashing detected"));
}

}  // namespace
}  // namespace tools::testing
