#include "tests/e2e/support/HelpCalls.h"

#include <windows.h>

#include <sstream>

#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {

namespace {

// By default Wine uses its own viewer first.
constexpr const char* kOverrides = "Software\\Wine\\AppDefaults\\velbooter.exe\\DllOverrides";
constexpr const char* kViewer = "hhctrl.ocx";
constexpr const char* kNotes = "help-calls.txt";
constexpr const char* kOwn = ".own";

std::string SystemPath(const std::string& name) {
    char folder[MAX_PATH] = "";
    ::GetSystemDirectoryA(folder, MAX_PATH);
    return std::string(folder) + "\\" + name;
}

bool IsThere(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

// The system's viewer has the second name until the end of the test. If that name exists already, a test
// that has died has left it.
HelpCalls::HelpCalls(const DemoFolder& folder, Place place)
    : folder_(folder), viewer_(place == Place::System ? SystemPath(kViewer) : folder.Path(kViewer)) {
    if (!IsThere(viewer_ + kOwn)) ::MoveFileA(viewer_.c_str(), (viewer_ + kOwn).c_str());
    CopyTestProgram("e2e_help.dll", viewer_);
    ::RegSetKeyValueA(HKEY_CURRENT_USER, kOverrides, kViewer, REG_SZ, "native", sizeof "native");
}

HelpCalls::~HelpCalls() {
    ::DeleteFileA(viewer_.c_str());
    ::MoveFileA((viewer_ + kOwn).c_str(), viewer_.c_str());
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
