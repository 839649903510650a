#include "tools/shared/ToolMain.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

#include <filesystem>

#include "tests/support/TestFolder.h"
#endif

#include <new>
#include <stdexcept>

#include "tools/shared/ToolError.h"

namespace tools::testing {
namespace {

// Runs `work` as a program named "tool", expects its exit code and returns what it has printed.
std::string Printed(const std::function<void()>& work, int expectedCode) {
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(expectedCode, RunTool("tool", work));
    return ::testing::internal::GetCapturedStderr();
}

TEST(ToolMain, SuccessIsSilentAndGivesCode0) {
    EXPECT_EQ("", Printed([] {}, 0));
}

TEST(ToolMain, AFailureIsOneLineWithTheProgramsNameAndGivesItsCode) {
    EXPECT_EQ("tool: a.txt: is missing\n", Printed([] { throw ToolError("a.txt: is missing"); }, 1));
    EXPECT_EQ("tool: no such option\n",
              Printed([] { throw ToolError("no such option", ExitCode::WrongCall); }, 2));
}

TEST(ToolMain, ANameWithControlCharactersStillMakesOneHarmlessLine) {
    EXPECT_EQ("tool: a?b??[2J?.txt: is missing\n",
              Printed([] { throw ToolError("a\nb\r\x1B[2J\x7F.txt: is missing"); }, 1));
    EXPECT_EQ("tool: a\\u009B31m\\u202E.txt: is missing\n", Printed(
                                                                [] {
                                                                    throw ToolError(
                                                                        "a\xC2\x9B"
                                                                        "31m\xE2\x80\xAE.txt: is missing");
                                                                },
                                                                1));
    EXPECT_EQ("tool: no?option\nusage: tool\n",
              Printed([] { throw ToolError("no\toption\nusage: tool", ExitCode::WrongCall); }, 2));
}

TEST(ToolMain, AnyOtherFailureGivesCode1) {
    EXPECT_EQ("tool: there is not enough memory\n", Printed([] { throw std::bad_alloc(); }, 1));
    EXPECT_EQ("tool: odd\n", Printed([] { throw std::runtime_error("odd"); }, 1));
}

#ifdef _WIN32
TEST(ToolMain, ALibraryOfTheWorkingFolderIsNotLoaded) {
    const testing::TestFolder folder;
    constexpr wchar_t kName[] = L"velbooter-test-library.dll";
    wchar_t program[MAX_PATH] = {};
    ASSERT_NE(GetModuleFileNameW(nullptr, program, MAX_PATH), 0U);
    ASSERT_TRUE(CopyFileW(program, (folder.Path() / kName).c_str(), TRUE));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    HMODULE byName = nullptr;
    EXPECT_EQ(0, RunTool("tool", [&] { byName = LoadLibraryW(kName); }));
    std::filesystem::current_path(before);
    EXPECT_EQ(nullptr, byName);
    if (byName != nullptr) FreeLibrary(byName);
    const HMODULE byPath = LoadLibraryW((folder.Path() / kName).c_str());
    EXPECT_NE(byPath, nullptr) << "the file can be loaded";
    if (byPath != nullptr) FreeLibrary(byPath);
}
#endif

}  // namespace
}  // namespace tools::testing
