#include "tests/fuzz/RandomTree.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "tests/fuzz/Contents.h"
#include "tools/shared/HostFiles.h"

namespace fuzz {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFiles = 300;
constexpr std::size_t kDeepest = 4;
constexpr std::size_t kLongestName = 60;

// Creates one tree, and knows what it has created so far.
class Maker {
 public:
    Maker(Choices& choices, const fs::path& folder, std::size_t longestFile)
        : choices_(choices), folder_(folder), longestFile_(longestFile) {}

    RandomTree Make() {
        const bool mayBeWild = choices_.Flag();
        std::string current;
        while (!choices_.AtEnd() && tree_.Files.size() < kMostFiles) {
            switch (choices_.Below(8)) {
                case 0:
                    Enter(current, Name(mayBeWild, false));
                    break;
                case 1:
                    current.erase(current.find_last_of('/') + 1);
                    if (!current.empty()) current.pop_back();
                    break;
                case 2:
                    // Many at once, so that directories grow.
                    for (std::uint32_t left = choices_.Below(40); left > 0; --left)
                        AddFile(Joined(current, PlainName(true)), {});
                    break;
                case 3:
                    AddSystemFile();
                    break;
                default:
                    AddFile(Joined(current, Name(mayBeWild, true)), ShortContents(choices_, longestFile_));
                    break;
            }
        }
        return std::move(tree_);
    }

 private:
    static std::string Joined(const std::string& folder, const std::string& name) {
        return folder.empty() ? name : folder + "/" + name;
    }

    std::string Name(bool mayBeWild, bool isFile) {
        if (!mayBeWild || choices_.Flag()) return PlainName(isFile);
        tree_.HasPlainNames = false;
        return WildName();
    }

    // Begins with a number that no other name has, so that no two are the same.
    std::string PlainName(bool isFile) {
        constexpr std::array<const char*, 24> kParts{"a",
                                                     "B",
                                                     "9",
                                                     "-",
                                                     "_",
                                                     "read",
                                                     "ME",
                                                     "\xC3\xA4",
                                                     "\xE6\xBC\xA2",
                                                     "\xF0\x9F\x92\xBE",
                                                     " x",
                                                     "+y",
                                                     ".z",
                                                     "q",
                                                     "ab",
                                                     "Long",
                                                     "filename",
                                                     "of many",
                                                     "w",
                                                     "k",
                                                     "0",
                                                     "1",
                                                     "2",
                                                     "3"};
        std::string name = std::to_string(number_++) + "n";
        for (std::uint32_t left = choices_.Below(8); left > 0; --left)
            name += kParts[choices_.Below(kParts.size())];
        if (isFile && choices_.Flag()) name += ".ext";
        return name;
    }

    std::string WildName() {
        constexpr std::array<const char*, 10> kOdd{"con",   "LPT1.txt", "nul ", "trail.", "blank ",
                                                   "UPPER", "upper",    "a\\b", "*.*",    "CLOCK$"};
        if (choices_.Flag()) return kOdd[choices_.Below(kOdd.size())];
        std::string name = choices_.Text(kLongestName);
        std::erase_if(name, [](char c) { return c == '/' || c == '\0'; });
        return name.empty() || name == "." || name == ".." ? "dot" : name;
    }

    void Enter(std::string& current, const std::string& name) {
        if (std::count(current.begin(), current.end(), '/') + 1 >= static_cast<int>(kDeepest)) return;
        const std::string path = Joined(current, name);
        std::error_code error;
        if (!fs::create_directory(folder_ / path, error)) return;
        tree_.Folders.push_back(path);
        current = path;
    }

    void AddSystemFile() {
        constexpr std::array<const char*, 3> kNames{"IO.SYS", "MSDOS.SYS", "COMMAND.COM"};
        AddFile(kNames[choices_.Below(kNames.size())], ShortContents(choices_, longestFile_));
    }

    void AddFile(const std::string& path, const Bytes& contents) {
        const fs::path place = folder_ / path;
        std::error_code error;
        if (fs::exists(fs::symlink_status(place, error))) return;
        {
            std::ofstream file(place, std::ios::binary);
            std::copy(contents.begin(), contents.end(), std::ostreambuf_iterator<char>(file));
            if (!file.flush()) return;
        }
        TreeFile made{path, contents, {}, tools::kArchive};
        made.Modified = tools::PackDosTime(
            1980 + static_cast<int>(choices_.Below(58)), 1 + static_cast<int>(choices_.Below(12)),
            1 + static_cast<int>(choices_.Below(28)), 3 + static_cast<int>(choices_.Below(21)), 30, 2);
        if (choices_.Below(4) == 1) made.Attributes = tools::kReadOnly;
        Require(tools::SetTimeAndAttributes(place, made.Modified, made.Attributes),
                "the system takes the time of a file");
        tree_.Files.push_back(made);
    }

    Choices& choices_;
    fs::path folder_;
    std::size_t longestFile_;
    unsigned number_ = 0;
    RandomTree tree_;
};

}  // namespace

RandomTree MakeRandomTree(Choices& choices, const fs::path& folder, std::size_t longestFile) {
    return Maker(choices, folder, longestFile).Make();
}

std::vector<Bytes> TreeSeeds() {
    return {
        {},
        // The system files, then a few of each kind of file.
        {0, 3, 0, 2, 3, 2, 70, 5, 3, 1, 1, 4, 1, 200, 0, 3, 2, 1, 5, 2, 5, 3, 7, 1, 2, 2, 4, 2, 9, 9, 0},
        // Folders in folders, and dozens of empty files.
        {0, 0, 2, 3, 4, 0, 1, 1, 2, 30, 1, 3, 0, 0, 2, 39, 7, 6, 5, 4, 1, 2, 20, 1, 1, 4, 2, 3, 4, 5, 6},
        // Names of any bytes.
        {1, 4, 0, 1, 0, 0, 1, 9, 5, 0, 0, 8, 'a', 'B', ' ', 'c', '.', 'd', 'e', '\\', 1, 4, 0, 1, 3, 0, 0},
        {1, 5, 0, 0, 6, 0xC3, 0xA4, 0xE6, 0xBC, 0xA2, '~', 1, 2, 5, 0, 1, 5, 7, 0, 1, 6, 6, 0, 1, 4, 2},
        // Long contents.
        {0, 4, 1, 2, 0, 3, 5, 2, 60, 9, 8, 4, 3, 3, 2, 50, 50, 5, 1, 1, 3, 6, 2, 70, 7, 7, 3, 9, 2, 99},
    };
}

}  // namespace fuzz
