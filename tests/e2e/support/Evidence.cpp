#include "tests/e2e/support/Evidence.h"

#include <gtest/gtest.h>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/BuiltFile.h"

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

}  // namespace

std::string RecordEvidence(DWORD process, const std::string& reason) {
    std::string text = reason + "\nwindows of the program:\n" + DescribeWindows(process);
    // On another machine than that of the build the report of the tests is the only evidence.
    if (tools::testing::TestsTravel()) return text;
    const std::string path = std::string(VELBOOTER_E2E_FAILURES) + "/" + CurrentTestName();
    WriteFileAt("Z:" + path + ".txt", text);
    text += TakePicture(path + ".png") ? "picture of the screen: " + path + ".png\n" : "no picture taken\n";
    return text;
}

}  // namespace velbooter::e2e
