#include "tests/e2e/support/HelpCalls.h"

#include <windows.h>

#include <sstream>

#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {

namespace {

// Wine takes its own viewer first unless it is told otherwise.
constexpr const char* kOverrides = "Software\\Wine\\AppDefaults\\velbooter.exe\\DllOverrides";
constexpr const char* kViewer = "hhctrl.ocx";
constexpr const char* kNotes = "help-calls.txt";

}  // namespace

HelpCalls::HelpCalls(const ApplicationFolder& folder) : folder_(folder) {
    CopyTestProgram("e2e_help.dll", folder.Path(kViewer));
    ::RegSetKeyValueA(HKEY_CURRENT_USER, kOverrides, kViewer, REG_SZ, "native", sizeof "native");
}

HelpCalls::~HelpCalls() {
    ::RegDeleteKeyValueA(HKEY_CURRENT_USER, kOverrides, kViewer);
}

std::vector<std::string> HelpCalls::Lines() const {
    if (!folder_.Exists(kNotes)) return {};
    std::istringstream file(folder_.Read(kNotes));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

std::vector<int> HelpCalls::Topics() const {
    std::vector<int> topics;
    for (const std::string& line : Lines()) topics.push_back(std::stoi(line.substr(line.rfind(' ') + 1)));
    return topics;
}

void HelpCalls::Forget() const {
    if (folder_.Exists(kNotes)) folder_.Remove(kNotes);
}

}  // namespace velbooter::e2e
