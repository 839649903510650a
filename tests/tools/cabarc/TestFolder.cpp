#include "tests/tools/cabarc/TestFolder.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "tools/shared/HostFiles.h"

namespace tools::cabarc::test {

namespace fs = std::filesystem;

Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

Bytes NoiseOf(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random() >> 13);
    return bytes;
}

Bytes ProseOf(std::size_t size, std::uint32_t seed) {
    constexpr const char* kWords[] = {"device", "driver ", "himem ", "lowers ", "the ",
                                      "\r\n",   "boot ",   "packet", ", "};
    std::mt19937 random(seed);
    std::string text;
    while (text.size() < size) {
        text += kWords[(random() >> 7) % std::size(kWords)];
        if (random() % 8 == 0) text += std::to_string(random() % 100000);
    }
    text.resize(size);
    return BytesOf(text);
}

void WriteBytes(const std::string& file, const Bytes& contents) {
    const fs::path path = PathFromUtf8(file);
    if (path.has_parent_path()) CreateFolders(path.parent_path());
    std::ofstream stream(LongPath(path), std::ios::binary);
    for (const std::uint8_t byte : contents) stream.put(static_cast<char>(byte));
    stream.close();
    if (!stream) throw std::runtime_error("the test cannot write " + file);
}

Bytes ReadBytes(const std::string& file) {
    std::ifstream stream(LongPath(PathFromUtf8(file)), std::ios::binary);
    if (!stream) throw std::runtime_error("the test cannot read " + file);
    return {std::istreambuf_iterator<char>(stream), {}};
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

namespace {

/// Read-only files and long paths, which Windows would keep, included.
void RemoveTree(const fs::path& folder) {
    for (const HostFile& entry : ListFolder(folder)) {
        const fs::path path = folder / PathFromUtf8(entry.Name);
        std::error_code ignored;
        if (entry.IsFolder && !entry.IsLink) {
            RemoveTree(path);
        } else {
            if (!entry.IsSpecial && !entry.IsLink) {
                fs::permissions(LongPath(path), fs::perms::owner_write, fs::perm_options::add, ignored);
            }
            fs::remove(LongPath(path), ignored);
        }
    }
    std::error_code ignored;
    fs::remove(LongPath(folder), ignored);
}

}  // namespace

InTestFolder::InTestFolder() : before_(fs::current_path()) {
    const auto* const info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "-" + info->name();
    for (char& c : name) {
        if (c == '/') c = '-';
    }
    // Another build's run of the same test may be under way.
    std::random_device random;
    do {
        Folder = fs::temp_directory_path() / ("cabarc-" + name + "-" + std::to_string(random()));
    } while (!fs::create_directory(Folder));
    fs::current_path(Folder);
}

InTestFolder::~InTestFolder() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
    RemoveTree(Folder);
}

}  // namespace tools::cabarc::test
