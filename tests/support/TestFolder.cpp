#include "tests/support/TestFolder.h"

#ifdef _WIN32
#include <io.h>
#include <sys/stat.h>
#endif

#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"

namespace tools::testing {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
// The standard library does not remove paths that are longer than the usual limit of Windows.
void RemoveTree(const fs::path& folder) {
    for (const HostFile& entry : ListFolder(folder)) {
        const fs::path path = LongPath(folder / PathFromUtf8(entry.Name));
        if (entry.IsFolder && !entry.IsLink) {
            RemoveTree(path);
        } else if (entry.IsFolder) {
            _wrmdir(path.c_str());
        } else {
            _wchmod(path.c_str(), _S_IWRITE);
            _wremove(path.c_str());
        }
    }
    _wrmdir(LongPath(folder).c_str());
}
#else
void RemoveTree(const fs::path& folder) {
    fs::remove_all(folder);
}
#endif

}  // namespace

void WriteFileAt(const fs::path& file, const Bytes& content) {
    if (file.has_parent_path()) CreateFolders(file.parent_path());
    std::ofstream stream(LongPath(file), std::ios::binary);
    std::copy(content.begin(), content.end(), std::ostreambuf_iterator<char>(stream));
    if (!stream.flush()) throw std::runtime_error("the test cannot write " + Utf8FromPath(file));
}

Bytes ReadFileAt(const fs::path& file) {
    std::ifstream stream(LongPath(file), std::ios::binary);
    if (!stream) throw std::runtime_error("the test cannot read " + Utf8FromPath(file));
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

TestFolder::TestFolder() {
    std::random_device random;
    do {
        root_ = fs::temp_directory_path() / ("velbooter test " + std::to_string(random()));
    } while (!fs::create_directory(root_));
}

TestFolder::~TestFolder() {
    try {
        RemoveTree(root_);
    } catch (const std::exception& error) {
        std::cerr << "not removed: " << root_ << ": " << error.what() << "\n";
    }
}

fs::path TestFolder::Path(const std::string& name) const {
    return name.empty() ? root_ : root_ / PathFromUtf8(name);
}

std::string TestFolder::Text(const std::string& name) const {
    return Utf8FromPath(Path(name));
}

void TestFolder::MakeFolder(const std::string& name) const {
    CreateFolders(Path(name));
}

void TestFolder::Write(const std::string& name, const Bytes& content) const {
    WriteFileAt(Path(name), content);
}

void TestFolder::Write(const std::string& name, const std::string& content) const {
    Write(name, BytesOf(content));
}

void TestFolder::Write(const std::string& name, const Bytes& content, DosTime modified,
                       std::uint8_t attributes) const {
    Write(name, content);
    if (!SetTimeAndAttributes(Path(name), modified, attributes))
        throw std::runtime_error("cannot set time and attributes of " + Text(name));
}

Bytes TestFolder::Read(const std::string& name) const {
    return ReadFileAt(Path(name));
}

bool TestFolder::Exists(const std::string& name) const {
    return KindOf(Path(name)) != FileKind::Missing;
}

void TestFolder::SetReadOnly(const std::string& name, bool isReadOnly) const {
    constexpr fs::perms kAnyoneWrites =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if (isReadOnly)
        fs::permissions(Path(name), kAnyoneWrites, fs::perm_options::remove);
    else
        fs::permissions(Path(name), fs::perms::owner_write, fs::perm_options::add);
}

std::vector<std::string> TestFolder::Names(const std::string& name) const {
    std::vector<std::string> names;
    for (const HostFile& file : ListFolder(Path(name))) names.push_back(file.Name);
    return names;
}

}  // namespace tools::testing
