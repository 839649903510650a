#include "tools/cabarc/SourceFiles.h"

#include <algorithm>
#include <unordered_set>

#include "tools/cabarc/MemberName.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/PartFile.h"
#include "tools/shared/PartName.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

// Walks the folders of the patterns, one pattern after another.
class Search {
 public:
    Search(bool recurse, const std::filesystem::path& cabinet) : recurse_(recurse), cabinet_(cabinet) {}

    void Add(const std::string& pattern) {
        const std::size_t lastSeparator = pattern.find_last_of(kPathSeparators);
        std::size_t folderEnd = lastSeparator == std::string::npos ? 0 : lastSeparator + 1;
        if (folderEnd == 0 && pattern.size() > 1 && pattern[1] == ':') folderEnd = 2;
        const std::string folder = pattern.substr(0, folderEnd);
        namePattern_ = pattern.substr(folderEnd);
        if (HasWildcard(folder))
            throw ToolError(pattern + ": wildcards may stand in the last part of a path only");
        const std::filesystem::path folderPath = PathFromUtf8(folder.empty() ? "." : folder);
        if (KindOf(PathFromUtf8(pattern)) == FileKind::Folder && !HasWildcard(namePattern_))
            throw ToolError(pattern + ": this is a folder; to pack its files, name them, as with *.*");
        matched_ = false;
        if (KindOf(folderPath) == FileKind::Folder) Walk(folder, folderPath);
        if (!matched_) throw ToolError(pattern + ": there is no such file");
    }

    std::vector<SourceFile> Take() { return std::move(files_); }

 private:
    void Walk(const std::string& folder, const std::filesystem::path& folderPath) {
        const std::vector<HostFile> entries = ListFolder(folderPath);
        for (const HostFile& entry : entries)
            if (!entry.IsFolder && MatchesPattern(namePattern_, entry.Name))
                AddFile(folder + entry.Name, entry);
        if (!recurse_) return;
        for (const HostFile& entry : entries) {
            if (!entry.IsFolder) continue;
            const std::string path = folder + entry.Name;
            CheckName(entry, path);
            if (entry.IsLink) throw ToolError(path + ": this is a link to a folder; links are not followed");
            Walk(path + "\\", PathFromUtf8(path));
        }
    }

    void AddFile(const std::string& path, const HostFile& entry) {
        CheckName(entry, path);
        if (entry.IsSpecial) throw ToolError(path + ": this is not an ordinary file");
        if (IsCabinet(path, entry.Name)) return;
        matched_ = true;
        std::string key = path;
        std::replace(key.begin(), key.end(), '/', '\\');
        if (seen_.insert(std::move(key)).second)
            files_.push_back({path, entry.Size, entry.Modified, entry.Attributes});
    }

    static void CheckName(const HostFile& entry, const std::string& path) {
        if (entry.Name.find('\\') != std::string::npos)
            throw ToolError(path + ": this name cannot be stored: it holds the character \\");
    }

    // Returns whether a file is the cabinet that is to be written, or what a killed run has left of it.
    // Asking the system about each file would take most of the time of the walk; the names alone decide
    // nearly always.
    bool IsCabinet(const std::string& path, const std::string& name) const {
        const std::filesystem::path file = PathFromUtf8(path);
        if (EqualsFolded(Utf8FromPath(cabinet_.filename()), name)) return IsSame(file, cabinet_);
        return name.find(kPartEnding) != std::string::npos && IsPart(file) &&
               IsSame(file, cabinet_.parent_path() / file.filename());
    }

    bool recurse_;
    std::filesystem::path cabinet_;
    std::string namePattern_;
    bool matched_ = false;
    std::unordered_set<std::string> seen_;
    std::vector<SourceFile> files_;
};

}  // namespace

std::vector<SourceFile> FindSourceFiles(std::span<const std::string> patterns, bool recurse,
                                        const std::filesystem::path& cabinet) {
    Search search(recurse, cabinet);
    for (const std::string& pattern : patterns) search.Add(pattern);
    return search.Take();
}

}  // namespace tools::cabarc
