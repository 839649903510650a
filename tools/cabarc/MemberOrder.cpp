// A chain is a path through the files, and the best one has the largest sum of resemblances from each file to
// the next. To find it is the travelling salesman's problem. The greedy answer is near enough: the pairs are
// taken in falling order of resemblance, and the two files of each become neighbours unless one of them has
// two neighbours already or they are the two ends of one chain.
//
// Growing a single chain from its end instead, always by the file that resembles the last one most, is
// simpler and was measured, too: it gains half as much. It passes by files that it must come back for when
// nothing is left that resembles them. Joining whole groups by their average resemblance gains as much on
// some sets and less on others, and needs far more time for many files.
//
// Cost: reading and taking the fingerprints is in proportion to the bytes, comparing to the pairs; in all a
// hundredth of the time of packing the reference sets with LZX. It would not pay for files that are stored
// uncompressed, and hardly for a few large ones.
//
// Sorting by extension comes first, because the names are a hint that costs nothing: it decides among equal
// resemblances, which pairs are compared when files are many, and where a chain stands.

#include "tools/cabarc/MemberOrder.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>
#include <unordered_set>

#include "tools/cabarc/Fingerprint.h"
#include "tools/cabarc/Wildcard.h"
#include "tools/shared/HostText.h"
#include "tools/shared/InputFile.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

// The extension of the last part of a path, without its dot; empty when there is none.
std::string_view ExtensionOf(std::string_view path) {
    const std::size_t mark = path.find_last_of("/\\.");
    return mark == std::string_view::npos || path[mark] != '.' ? std::string_view() : path.substr(mark + 1);
}

// Whether the extension of `a` sorts before that of `b`; ASCII case does not matter.
bool ExtensionIsLess(const SourceFile& a, const SourceFile& b) {
    const std::string_view left = ExtensionOf(a.Path);
    const std::string_view right = ExtensionOf(b.Path);
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char x, char y) { return UpperAscii(x) < UpperAscii(y); });
}

// Returns the same text for spellings of a path that differ only in slashes and ASCII case.
std::string Canonical(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return UpperAscii(path);
}

// Files in a row that may change places: their numbers from Begin up to End.
struct Run {
    std::size_t Begin;
    std::size_t End;
};

// Returns the runs between the files that the user has named one by one.
std::vector<Run> RunsOf(std::span<const SourceFile> files, std::span<const std::string> names) {
    std::unordered_set<std::string> named;
    for (const std::string& name : names)
        if (!HasWildcard(name)) named.insert(Canonical(name));
    std::vector<Run> runs;
    std::size_t begin = 0;
    for (std::size_t i = 0; i <= files.size(); ++i) {
        if (i < files.size() && (named.empty() || named.count(Canonical(files[i].Path)) == 0)) continue;
        if (begin < i) runs.push_back({begin, i});
        begin = i + 1;
    }
    return runs;
}

std::vector<Fingerprint> FingerprintsOf(std::span<const SourceFile> files) {
    std::vector<Fingerprint> prints;
    prints.reserve(files.size());
    std::vector<std::uint8_t> buffer(kComparedBytes);
    for (const SourceFile& file : files) {
        InputFile input(PathFromUtf8(file.Path));
        prints.emplace_back(std::span(buffer).first(input.Read(buffer)));
    }
    return prints;
}

struct Pair {
    std::uint32_t Resemblance;
    std::uint32_t First;
    std::uint32_t Second;
};

// Returns the pairs of files that resemble each other, the most alike first. Among equals those nearest to
// each other come first, so that files that are all alike keep their order.
std::vector<Pair> AlikePairs(std::size_t count, const ResemblanceOf& resemblance) {
    std::vector<Pair> pairs;
    const std::size_t reach = std::max<std::size_t>(1, kMaxPairs / std::max<std::size_t>(1, count));
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t j = i + 1; j < count && j - i <= reach; ++j) {
            if (const std::uint32_t alike = resemblance(i, j); alike != 0)
                pairs.push_back({alike, static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j)});
        }
    }
    std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) {
        if (a.Resemblance != b.Resemblance) return a.Resemblance > b.Resemblance;
        const std::uint32_t apartA = a.Second - a.First;
        const std::uint32_t apartB = b.Second - b.First;
        return apartA != apartB ? apartA < apartB : a.First < b.First;
    });
    return pairs;
}

// Chains that grow together. Each file has up to two neighbours, and each chain its representative, by which
// two ends of one chain are known.
class Chains {
 public:
    explicit Chains(std::size_t count) : neighbours_(count), parent_(count) {
        std::iota(parent_.begin(), parent_.end(), std::size_t{0});
    }

    // Makes the two files neighbours, where that leaves chains without branches and circles.
    void Join(std::size_t a, std::size_t b) {
        if (neighbours_[a].Count == 2 || neighbours_[b].Count == 2) return;
        const std::size_t chainOfA = ChainOf(a);
        const std::size_t chainOfB = ChainOf(b);
        if (chainOfA == chainOfB) return;
        parent_[chainOfA] = chainOfB;
        neighbours_[a].Add(b);
        neighbours_[b].Add(a);
    }

    // Returns all files, chain by chain, each from the end with the lesser number.
    std::vector<std::size_t> InOrder() const {
        std::vector<std::size_t> order;
        std::vector<bool> taken(neighbours_.size());
        for (std::size_t i = 0; i < neighbours_.size(); ++i) {
            if (taken[i]) continue;
            const std::vector<std::size_t> toOneEnd = WalkFrom(i, 0);
            const std::vector<std::size_t> toTheOther = WalkFrom(i, 1);
            const std::size_t start = std::min(toOneEnd.back(), toTheOther.back());
            for (const std::size_t file : WalkFrom(start, 0)) {
                taken[file] = true;
                order.push_back(file);
            }
        }
        return order;
    }

 private:
    struct Neighbours {
        std::array<std::size_t, 2> Files{};
        std::size_t Count = 0;
        void Add(std::size_t file) { Files[Count++] = file; }
    };

    std::size_t ChainOf(std::size_t file) {
        while (parent_[file] != file) file = parent_[file] = parent_[parent_[file]];
        return file;
    }

    // Returns the files from `file` on to the end of the chain on the side of its neighbour `side`; `file`
    // alone when it has no such neighbour.
    std::vector<std::size_t> WalkFrom(std::size_t file, std::size_t side) const {
        std::vector<std::size_t> walked{file};
        if (side >= neighbours_[file].Count) return walked;
        std::size_t next = neighbours_[file].Files[side];
        for (;;) {
            const std::size_t from = walked.back();
            walked.push_back(next);
            const Neighbours& there = neighbours_[next];
            if (there.Count < 2) return walked;
            next = there.Files[there.Files[0] == from ? 1 : 0];
        }
    }

    std::vector<Neighbours> neighbours_;
    std::vector<std::size_t> parent_;
};

}  // namespace

void SortByExtension(std::vector<SourceFile>& files, std::span<const std::string> names) {
    for (const Run& run : RunsOf(files, names)) {
        const auto begin = files.begin();
        std::stable_sort(begin + static_cast<std::ptrdiff_t>(run.Begin),
                         begin + static_cast<std::ptrdiff_t>(run.End), ExtensionIsLess);
    }
}

std::vector<std::size_t> ChainByResemblance(std::size_t count, const ResemblanceOf& resemblance) {
    Chains chains(count);
    for (const Pair& pair : AlikePairs(count, resemblance)) chains.Join(pair.First, pair.Second);
    return chains.InOrder();
}

std::vector<std::size_t> OrderByContents(std::span<const SourceFile> files,
                                         std::span<const std::string> names) {
    std::vector<std::size_t> order(files.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (const Run& run : RunsOf(files, names)) {
        const std::size_t count = run.End - run.Begin;
        if (count < 3) continue;  // there is nothing to choose between two
        const std::vector<Fingerprint> prints = FingerprintsOf(files.subspan(run.Begin, count));
        const std::vector<std::size_t> chain = ChainByResemblance(
            count, [&](std::size_t a, std::size_t b) { return prints[a].Resemblance(prints[b]); });
        std::transform(chain.begin(), chain.end(), order.begin() + static_cast<std::ptrdiff_t>(run.Begin),
                       [&](std::size_t number) { return run.Begin + number; });
    }
    return order;
}

}  // namespace tools::cabarc
