// Holds a tool up: takes its place as NAME.exe, shows by a file NAME.held that it was started, waits for a
// file NAME.go, and then runs the tool itself, NAME.real.exe, with its own arguments.

#include <windows.h>

#include <fstream>
#include <string>

namespace {

// The text after the program's own name, the separating space included.
std::string Arguments() {
    const std::string line = ::GetCommandLineA();
    const bool isQuoted = !line.empty() && line.front() == '"';
    const size_t end = isQuoted ? line.find('"', 1) + 1 : line.find(' ');
    return end < line.size() ? line.substr(end) : "";
}

bool Exists(const std::string& path) {
    return ::GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, char* /*commandLine*/, int /*show*/) {
    constexpr int kNoTool = 99;
    constexpr DWORD kStep = 10;
    constexpr ULONGLONG kPatience = 60000;  // a test that has died must not hold up others for ever
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string own = path;
    const std::string name = own.substr(0, own.rfind('.'));
    std::ofstream(name + ".held").close();
    const ULONGLONG end = ::GetTickCount64() + kPatience;
    while (!Exists(name + ".go") && ::GetTickCount64() < end) ::Sleep(kStep);

    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::string line = "\"" + name + ".real.exe\"" + Arguments();
    if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                         &startup, &process) == 0) {
        return kNoTool;
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = kNoTool;
    ::GetExitCodeProcess(process.hProcess, &code);
    return static_cast<int>(code);
}
