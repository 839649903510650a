#include "tests/support/ApplicationFolder.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "tests/support/BuiltFile.h"
#include "tests/support/Patience.h"
#include "tests/support/WinePath.h"

namespace velbooter::testing {

namespace fs = std::filesystem;

namespace {

std::string WithoutExtension(const std::string& path) {
    return path.substr(0, path.rfind('.'));
}

std::string FreshFolder() {
    static int counter = 0;
    char buffer[MAX_PATH];
    std::string base(buffer, GetTempPathA(MAX_PATH, buffer));
    // The program does not quote the command lines of its tools, so a space in the path would change them.
    if (base.find(' ') != std::string::npos) {
        base.assign(buffer, GetShortPathNameA(base.c_str(), buffer, MAX_PATH));
        if (base.empty() || base.find(' ') != std::string::npos)
            throw std::runtime_error("the temporary folder needs a path without a space");
    }
    const std::string path =
        base + "vb" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++counter);
    fs::remove_all(path);
    fs::create_directories(path);
    return path;
}

void Start(const std::string& commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::string line = commandLine;
    ASSERT_TRUE(::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                                 nullptr, &startup, &process));
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

}  // namespace

std::string CurrentFolder() {
    char buffer[MAX_PATH];
    return std::string(buffer, GetCurrentDirectoryA(MAX_PATH, buffer));
}

std::string TestProgramFolder() {
    char buffer[MAX_PATH];
    const std::string path(buffer, GetModuleFileNameA(nullptr, buffer, MAX_PATH));
    return path.substr(0, path.rfind('\\'));
}

ApplicationFolder::ApplicationFolder() : path_(FreshFolder()), formerFolder_(CurrentFolder()) {}

ApplicationFolder::~ApplicationFolder() {
    SetCurrentDirectoryA(formerFolder_.c_str());
    RemoveLinks();
    std::error_code ignored;
    std::vector<fs::path> entries;
    for (const auto& entry : fs::recursive_directory_iterator(path_, ignored)) entries.push_back(entry);
    for (const fs::path& entry : entries) {
        SetFileAttributesA(entry.string().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    // A tool that a test no longer waits for may still be ending.
    constexpr int kTries = 100;
    constexpr DWORD kPauseMs = 50;
    for (int i = 0; i < kTries; ++i) {
        fs::remove_all(path_, ignored);
        if (!fs::exists(path_, ignored)) return;
        Sleep(kPauseMs);
    }
}

std::string ApplicationFolder::Write(const std::string& tail, const std::string& content) const {
    const std::string path = At(tail);
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    EXPECT_TRUE(file.good()) << "cannot write " << path;
    return path;
}

std::string ApplicationFolder::Read(const std::string& tail) const {
    std::ifstream file(At(tail), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << "cannot read " << At(tail);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string ApplicationFolder::MakeFolder(const std::string& tail) const {
    fs::create_directories(At(tail));
    return At(tail);
}

void ApplicationFolder::Remove(const std::string& tail) const {
    fs::remove_all(At(tail));
}

bool ApplicationFolder::HasFile(const std::string& tail) const {
    return fs::is_regular_file(At(tail));
}

bool ApplicationFolder::HasFolder(const std::string& tail) const {
    return fs::is_directory(At(tail));
}

void ApplicationFolder::SetAttributes(const std::string& tail, std::uint32_t attributes) const {
    ASSERT_TRUE(SetFileAttributesA(At(tail).c_str(), attributes)) << At(tail);
}

std::uint32_t ApplicationFolder::Attributes(const std::string& tail) const {
    return GetFileAttributesA(At(tail).c_str());
}

void ApplicationFolder::MakeLink(const std::string& tail, const std::string& target) {
    const std::string unixTarget = UnixPath(At(target));
    if (unixTarget.empty()) {
        Start("cmd.exe /c mklink /J \"" + At(tail) + "\" \"" + At(target) + "\"");
    } else {
        Start("Z:\\bin\\ln -s \"" + unixTarget + "\" \"" + UnixPathOfLink(tail) + "\"");
    }
    links_.push_back(tail);
    // For a program of the system below it, Wine returns no handle to wait for.
    ASSERT_TRUE(Eventually([&] { return HasFolder(tail); }));
}

// Wine cannot delete a link to a folder: it deletes the folder.
void ApplicationFolder::RemoveLinks() {
    for (const std::string& link : links_) {
        if (UnixPath(path_).empty()) {
            RemoveDirectoryA(At(link).c_str());
        } else {
            Start("Z:\\bin\\rm -f \"" + UnixPathOfLink(link) + "\"");
        }
        ASSERT_TRUE(Eventually([&] { return !HasFolder(link); }));
    }
    links_.clear();
}

// The name of a link itself cannot be queried, only that of the folder that it leads to.
std::string ApplicationFolder::UnixPathOfLink(const std::string& tail) const {
    std::string name = "/" + tail;
    std::replace(name.begin(), name.end(), '\\', '/');
    return UnixPath(path_) + name;
}

std::vector<std::string> ApplicationFolder::Tree(const std::string& tail) const {
    std::vector<std::string> files;
    const std::string root = tail.empty() ? path_ : At(tail);
    if (!fs::is_directory(root)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_directory()) continue;
        std::string file = entry.path().string().substr(root.size() + 1);
        std::replace(file.begin(), file.end(), '/', '\\');
        files.push_back(file);
    }
    std::sort(files.begin(), files.end());
    return files;
}

void ApplicationFolder::MakeTool(const std::string& tail, const std::string& instructions) const {
    const std::string path = At(tail);
    fs::create_directories(fs::path(path).parent_path());
    tools::testing::CopyOver(TestProgramFolder() + "\\recorder.exe", path);
    Write(WithoutExtension(tail) + ".do", instructions);
}

std::vector<ToolCall> ApplicationFolder::Calls(const std::string& tail) const {
    std::vector<ToolCall> calls;
    const std::string log = WithoutExtension(tail) + ".log";
    if (!HasFile(log)) return calls;
    std::istringstream lines(Read(log));
    ToolCall call;
    while (std::getline(lines, call.CommandLine) && std::getline(lines, call.Window) &&
           std::getline(lines, call.WorkingFolder)) {
        calls.push_back(call);
    }
    return calls;
}

}  // namespace velbooter::testing
