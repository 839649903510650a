#include "tests/tools/cabarc/InTestFolder.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/BuiltFile.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"

namespace tools::cabarc::testing {

namespace fs = std::filesystem;

namespace {

ProgramResult RunWith(std::vector<std::string> words, const std::string& line) {
    std::istringstream stream(line);
    for (std::string word; stream >> word;) words.push_back(word);
    return RunProgram(words);
}

}  // namespace

void WriteBytes(const std::string& file, const Bytes& contents) {
    WriteFileAt(PathFromUtf8(file), contents);
}

Bytes ReadBytes(const std::string& file) {
    return ReadFileAt(PathFromUtf8(file));
}

void SetTime(const std::string& file, int year, int month, int day, int hour, int minute, int second) {
    const fs::path path = PathFromUtf8(file);
    std::uint8_t attributes = 0;
    for (const HostFile& entry : ListFolder(path.has_parent_path() ? path.parent_path() : fs::path("."))) {
        if (PathFromUtf8(entry.Name) == path.filename()) attributes = entry.Attributes;
    }
    if (!SetTimeAndAttributes(path, PackDosTime(year, month, day, hour, minute, second), attributes)) {
        throw std::runtime_error("the test cannot set the time of " + file);
    }
}

std::map<std::string, Bytes> TreeOf(const std::string& folder) {
    std::map<std::string, Bytes> tree;
    for (const HostFile& entry : ListFolder(PathFromUtf8(folder))) {
        const std::string path = folder + "/" + entry.Name;
        if (entry.IsFolder) {
            for (auto& [name, contents] : TreeOf(path)) tree[entry.Name + "/" + name] = std::move(contents);
        } else {
            tree[entry.Name] = ReadBytes(path);
        }
    }
    return tree;
}

ProgramResult RunLine(const std::string& line) {
    return RunWith({}, line);
}

ProgramResult RunCabarc(const std::string& arguments) {
    return RunWith({Utf8FromPath(tools::testing::BuiltFile("demo/cabarc.exe", CABARC_PROGRAM))}, arguments);
}

InTestFolder::InTestFolder() : before_(fs::current_path()) {
    fs::current_path(Folder);
}

InTestFolder::~InTestFolder() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
}

}  // namespace tools::cabarc::testing
