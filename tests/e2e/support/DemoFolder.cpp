#include "tests/e2e/support/DemoFolder.h"

#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/support/BuiltFile.h"

namespace velbooter::e2e {

namespace fs = std::filesystem;

namespace {

// A path of the system below Wine is reached through drive Z:.
std::string WindowsPath(std::string path) {
    if (path.empty() || path.front() != '/') return path;
    std::replace(path.begin(), path.end(), '/', '\\');
    return "Z:" + path;
}

std::string BuiltDemonstration() {
    const char* given = std::getenv("VELBOOTER_DEMO_FOLDER");
    if (given != nullptr) return WindowsPath(given);
    return Ansi(tools::testing::BuiltFile("demo", VELBOOTER_DEMO_FOLDER).wstring());
}

std::string NewTestFolder() {
    char temp[MAX_PATH] = "";
    ::GetTempPathA(MAX_PATH, temp);
    static int number = 0;
    return std::string(temp) + "velbooter-e2e-" + std::to_string(::GetCurrentProcessId()) + "-" +
           std::to_string(++number);
}

// The library does not convert narrow names by the code page.
fs::path PathFromAnsi(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int used =
        ::MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    wide.resize(static_cast<size_t>(used));
    return wide;
}

// Read-only files cannot be removed; a test may have created some. An iterator that fails at a folder which
// disappears meanwhile does not advance.
void RemoveTree(const fs::path& path) {
    std::error_code error;
    for (fs::recursive_directory_iterator entry(path, error), end; !error && entry != end;
         entry.increment(error)) {
        ::SetFileAttributesW(entry->path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    fs::remove_all(path, error);
}

}  // namespace

DemoFolder::DemoFolder(const std::string& name, const std::string& parent)
    : base_(NewTestFolder()), path_((parent.empty() ? base_ : parent) + "\\" + name) {
    const std::string demo = BuiltDemonstration();
    if (!fs::exists(demo + "\\velbooter.exe")) {
        throw HarnessFailure("no demonstration in " + demo + ": scripts/build.sh makes it");
    }
    RemoveTree(base_);
    const fs::path target = PathFromAnsi(path_);
    // An existing folder would be taken for the demonstration itself when both are on one drive.
    fs::create_directories(target.parent_path());
    fs::copy(demo, target, fs::copy_options::recursive);
}

DemoFolder::~DemoFolder() {
    RemoveTree(PathFromAnsi(path_));
    RemoveTree(base_);
}

std::string DemoFolder::Path(const std::string& tail) const {
    return tail.empty() ? path_ : path_ + "\\" + tail;
}

std::string DemoFolder::OutsidePath(const std::string& tail) const {
    fs::create_directories(base_ + "\\outside");
    return base_ + "\\outside\\" + tail;
}

bool DemoFolder::Exists(const std::string& tail) const {
    return fs::exists(PathFromAnsi(Path(tail)));
}

void DemoFolder::Write(const std::string& tail, const std::string& contents) const {
    WriteFileAt(Path(tail), contents);
}

std::string DemoFolder::Read(const std::string& tail) const {
    return ReadFileAt(Path(tail));
}

void DemoFolder::Remove(const std::string& tail) const {
    if (fs::remove_all(PathFromAnsi(Path(tail))) == 0)
        throw HarnessFailure("nothing to remove at " + Path(tail));
}

std::vector<std::string> DemoFolder::Names(const std::string& tail) const {
    std::vector<std::string> names;
    if (!Exists(tail)) return names;
    for (const auto& entry : fs::directory_iterator(PathFromAnsi(Path(tail)))) {
        names.push_back(Ansi(entry.path().filename().wstring()));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void DemoFolder::SetCustomDisk(const std::vector<std::string>& lines) const {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    Write("files\\custom.ini", text);
}

std::vector<std::string> SmallDisk() {
    // The empty section selects no driver.
    return {"[DefaultDrivers]", "[Copy_Files]", "io.sys=IO.SYS", "command.com=COMMAND.COM"};
}

std::vector<std::string> SmallDiskWith(const std::vector<std::string>& more) {
    std::vector<std::string> lines = SmallDisk();
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

std::string Ansi(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    constexpr int kMostBytes = 4;
    std::string narrow(text.size() * kMostBytes, '\0');
    const int used = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, narrow.data(),
                                           static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<size_t>(used));
    if (PathFromAnsi(narrow).wstring() != text) throw HarnessFailure("the code page cannot spell a name");
    return narrow;
}

std::string ReadFileAt(const std::string& path) {
    std::ifstream file(PathFromAnsi(path), std::ios::binary);
    if (!file) throw HarnessFailure("cannot read " + path);
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFileAt(const std::string& path, const std::string& contents) {
    const fs::path target = PathFromAnsi(path);
    fs::create_directories(target.parent_path());
    std::ofstream file(target, std::ios::binary | std::ios::trunc);
    file << contents;
    file.close();
    if (!file) throw HarnessFailure("cannot write " + path);
}

}  // namespace velbooter::e2e
