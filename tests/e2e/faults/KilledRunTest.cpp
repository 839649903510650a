// Runs that are killed at any moment: no incomplete file has the target's name, and the next run works.

#include <gtest/gtest.h>

#include <random>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {
namespace {

class KilledRun : public testing::Test {
 protected:
    void SetUp() override {
        folder_.SetCustomDisk(DiskWithAModule());
        const ULONGLONG begin = ::GetTickCount64();
        ExpectRunWorks(folder_);
        duration_ = static_cast<DWORD>(::GetTickCount64() - begin);
    }

    // Kills a run `moment` milliseconds after its start. A tool that it has just started continues alone and
    // gets a second to end; one that the kill has kept from beginning would hang for ever.
    void Kill(DWORD moment) const {
        PutOldImage(folder_);
        ProgramUnderTest program(folder_, kBuild);
        ::Sleep(moment);
        program.Kill();
        EndChildrenOf(program.ProcessId(), program.Start());
    }

    void ExpectOldOrNewImage() const {
        if (folder_.Read(kTarget) == kOldImage) {
            ExpectOldImage(folder_);
        } else {
            ExpectImage(folder_, folder_.Path(kTarget), kSmallImageBytes);
        }
    }

    const DemoFolder folder_;
    DWORD duration_ = 0;  ///< of a whole run, in milliseconds
};

TEST_F(KilledRun, DisturbsNoLaterRunWheneverItIsKilled) {
    constexpr int kMoments = 20;
    std::mt19937 generator(20);
    for (int i = 0; i < kMoments; ++i) {
        const auto moment = static_cast<DWORD>(generator() % duration_);
        SCOPED_TRACE("killed after " + std::to_string(moment) + " of " + std::to_string(duration_) + " ms");
        Kill(moment);
        ExpectOldOrNewImage();
        ExpectRunWorks(folder_);
    }
}

}  // namespace
}  // namespace velbooter::e2e
