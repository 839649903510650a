#include "console/Report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "src/run/ProgramEnd.h"

namespace velbooter::testing {
namespace {

constexpr std::uint32_t kLastCode = static_cast<std::uint32_t>(ExitCode::NoImage);

TEST(Report, EachEndHasALineOfItsOwnThatNamesTheCode) {
    std::set<std::string> texts;
    for (std::uint32_t code = 0; code <= kLastCode + 1; ++code) {
        const std::string line = OutcomeLine(code);
        EXPECT_TRUE(line.starts_with("velbooter: ")) << line;
        const std::string end = " (exit code " + std::to_string(code) + ").\n";
        ASSERT_TRUE(line.ends_with(end)) << line;
        EXPECT_EQ(1, std::count(line.begin(), line.end(), '\n'));
        texts.insert(line.substr(0, line.size() - end.size()));
    }
    EXPECT_EQ(kLastCode + 2, texts.size());
}

TEST(Report, TheBestAndTheWorstEnd) {
    EXPECT_EQ("velbooter: the build reached its end (exit code 0).\n", OutcomeLine(0));
    EXPECT_EQ("velbooter: velbooter.exe was terminated (exit code 3221225477).\n", OutcomeLine(0xC0000005));
}

TEST(Report, ABuiltImageIsNamedWithWhatIsUsed) {
    EXPECT_EQ("velbooter: C:\\out\\my disk.img is built; 811 of its 1423 KB are used (exit code 0).\n",
              BuiltLine("C:\\out\\my disk.img", {811 * 1024 + 512, 1457664}));
}

TEST(Report, ProgramThatCannotRunIsNamed) {
    EXPECT_EQ(
        "velbooter: C:\\My App\\velbooter.exe is missing; it must be in the same folder as velbooter.com.\n",
        MissingLine("C:\\My App\\velbooter.exe"));
    EXPECT_EQ("velbooter: C:\\velbooter.exe cannot be started or waited for (system error 193).\n",
              NotStartedLine("C:\\velbooter.exe", 193));
}

TEST(Report, OwnExitCodeIsNoneOfTheProgram) {
    EXPECT_GT(kNotStarted, kLastCode);
}

}  // namespace
}  // namespace velbooter::testing
