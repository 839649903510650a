#include "tests/e2e/support/Programs.h"

#include <tlhelp32.h>

#include <filesystem>
#include <vector>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/support/BuiltFile.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

namespace {

constexpr DWORD kAccessToKill = PROCESS_TERMINATE | SYNCHRONIZE | PROCESS_QUERY_INFORMATION;

// Returns whether the process was still running.
bool KillAndWait(HANDLE process) {
    ::TerminateProcess(process, kKilled);
    ::WaitForSingleObject(process, kPatienceMs);
    DWORD code = 0;
    ::GetExitCodeProcess(process, &code);
    return code == kKilled;
}

// A parent is identified by its id only, even if it has ended.
std::vector<PROCESSENTRY32> ChildrenOf(DWORD parent) {
    const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::vector<PROCESSENTRY32> children;
    for (BOOL more = ::Process32First(snapshot, &entry); more != FALSE;
         more = ::Process32Next(snapshot, &entry)) {
        if (entry.th32ParentProcessID == parent) children.push_back(entry);
    }
    ::CloseHandle(snapshot);
    return children;
}

// Returns the child's process id, or 0.
DWORD FindChild(DWORD parent, const std::string& name) {
    DWORD found = 0;
    for (const PROCESSENTRY32& child : ChildrenOf(parent)) {
        if (::lstrcmpiA(child.szExeFile, name.c_str()) == 0) found = child.th32ProcessID;
    }
    return found;
}

}  // namespace

std::string TestProgram(const std::string& name) {
    char path[MAX_PATH] = "";
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    const std::string own = path;
    return own.substr(0, own.rfind('\\') + 1) + name;
}

void CopyTestProgram(const std::string& name, const std::string& target) {
    tools::testing::CopyOver(TestProgram(name), target);
}

HeldTool::HeldTool(const DemoFolder& folder, const std::string& name) : folder_(folder), name_(name) {
    const std::string tool = folder.Path(name + ".exe");
    std::filesystem::rename(tool, folder.Path(name + ".real.exe"));
    CopyTestProgram("e2e_held.exe", tool);
}

StartedTool::StartedTool(const std::string& commandLine, const std::string& folder) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::string line = commandLine;
    if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                         folder.c_str(), &startup, &process) == 0) {
        throw HarnessFailure("did not start: " + commandLine);
    }
    ::CloseHandle(process.hThread);
    process_ = process.hProcess;
}

StartedTool::~StartedTool() {
    KillAndWait(process_);
    ::CloseHandle(process_);
}

DWORD StartedTool::ExitCode() {
    if (::WaitForSingleObject(process_, kPatienceMs) != WAIT_OBJECT_0)
        throw HarnessFailure("a tool does not end");
    DWORD code = 0;
    ::GetExitCodeProcess(process_, &code);
    return code;
}

bool StartedTool::Kill() {
    return KillAndWait(process_);
}

DWORD WaitForChild(DWORD parent, const std::string& name) {
    DWORD child = 0;
    if (!Eventually([&] { return (child = FindChild(parent, name)) != 0; }, 1))
        throw HarnessFailure(name + " was not started");
    return child;
}

bool KillChild(DWORD parent, const std::string& name) {
    const HANDLE process = ::OpenProcess(kAccessToKill, FALSE, WaitForChild(parent, name));
    if (process == nullptr) return false;
    const bool killed = KillAndWait(process);
    ::CloseHandle(process);
    return killed;
}

ULONGLONG StartOf(HANDLE process) {
    FILETIME start{};
    FILETIME other{};
    if (::GetProcessTimes(process, &start, &other, &other, &other) == 0)
        throw HarnessFailure("a process does not say when it was started");
    return ULARGE_INTEGER{{start.dwLowDateTime, start.dwHighDateTime}}.QuadPart;
}

void EndChildrenOf(DWORD parent, ULONGLONG parentStart) {
    constexpr DWORD kTimeToEnd = 1000;
    for (const PROCESSENTRY32& child : ChildrenOf(parent)) {
        const HANDLE process = ::OpenProcess(kAccessToKill, FALSE, child.th32ProcessID);
        if (process == nullptr) continue;
        const bool isOwn = StartOf(process) >= parentStart;
        if (isOwn && ::WaitForSingleObject(process, kTimeToEnd) == WAIT_TIMEOUT) KillAndWait(process);
        ::CloseHandle(process);
    }
}

}  // namespace velbooter::e2e
