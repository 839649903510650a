#include "tests/e2e/support/Evidence.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/support/ApplicationFolder.h"
#include "tests/e2e/support/WindowTree.h"

namespace velbooter::e2e {

namespace {

std::string CurrentTestName() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    if (test == nullptr) return "no-test";
    std::string name = std::string(test->test_suite_name()) + "." + test->name();
    for (char& character : name) {
        if (character == '/') character = '-';
    }
    return name;
}

// Wine starts a program of the system below it as it starts one of Windows, but gives no handle to wait for:
// the picture gets its name when it is complete.
bool TakePicture(const std::string& unixPath) {
    std::filesystem::remove("Z:" + unixPath);
    std::string command = "Z:\\bin\\sh -c \"import -window root '" + unixPath + ".part.png' && mv '" +
                          unixPath + ".part.png' '" + unixPath + "'\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (::CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                         &process) == 0) {
        return false;
    }
    constexpr int kTries = 100;
    constexpr DWORD kStep = 50;
    for (int i = 0; i < kTries; ++i) {
        if (std::filesystem::exists("Z:" + unixPath)) return true;
        ::Sleep(kStep);
    }
    return false;
}

}  // namespace

std::string RecordEvidence(DWORD process, const std::string& reason) {
    const std::string path = std::string(VELBOOTER_E2E_FAILURES) + "/" + CurrentTestName();
    std::string text = reason + "\nwindows of the program:\n" + DescribeWindows(process);
    WriteFileAt("Z:" + path + ".txt", text);
    text += TakePicture(path + ".png") ? "picture of the screen: " + path + ".png\n" : "no picture taken\n";
    return text;
}

}  // namespace velbooter::e2e
