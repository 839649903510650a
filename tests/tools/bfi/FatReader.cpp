#include "tests/tools/bfi/FatReader.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace tools::bfi::testing {
namespace {

void Require(bool isSound, const std::string& what) {
    if (!isSound) throw std::runtime_error(what);
}

std::uint16_t WordAt(const std::uint8_t* raw, std::size_t offset) {
    return static_cast<std::uint16_t>(raw[offset] | raw[offset + 1] << 8);
}

// A long name, which comes before the short one in parts, the last part first.
class LongName {
 public:
    explicit LongName(const std::string& prefix) : prefix_(prefix) {}

    void AddPart(const std::uint8_t* raw) {
        const int number = raw[0] & 0x3F;
        if ((raw[0] & 0x40) != 0) {
            Require(partsLeft_ == 0, prefix_ + ": a long name without its short one");
            name_.clear();
            checksum_ = raw[13];
        } else {
            Require(number == partsLeft_ && raw[13] == checksum_,
                    prefix_ + ": parts of a long name out of order");
        }
        Require(raw[12] == 0 && WordAt(raw, 26) == 0, prefix_ + ": a long name with odd fields");
        partsLeft_ = number == 1 ? kComplete : number - 1;
        std::u16string part;
        for (const std::size_t offset : {1, 3, 5, 7, 9, 14, 16, 18, 20, 22, 24, 28, 30})
            part += static_cast<char16_t>(WordAt(raw, offset));
        name_ = part + name_;
    }

    // Returns the long name that belongs to the short one and forgets it; empty when there is none.
    std::u16string TakeFor(const std::string& shortName) {
        if (partsLeft_ == 0) return {};
        Require(partsLeft_ == kComplete && checksum_ == Checksum(shortName),
                prefix_ + shortName + ": not the long name's");
        const std::size_t end = name_.find(u'\0');
        if (end != std::u16string::npos)
            Require(name_.find_first_not_of(char16_t{0xFFFF}, end + 1) == std::u16string::npos,
                    prefix_ + shortName + ": a long name with odd padding");
        partsLeft_ = 0;
        return name_.substr(0, end);
    }

    void RequireNone() const { Require(partsLeft_ == 0, prefix_ + ": a long name at the end"); }

 private:
    static constexpr int kComplete = -1;

    static unsigned Checksum(const std::string& raw) {
        unsigned sum = 0;
        for (const char letter : raw)
            sum = (((sum & 1) << 7) + (sum >> 1) + static_cast<std::uint8_t>(letter)) & 0xFF;
        return sum;
    }

    const std::string& prefix_;
    std::u16string name_;
    int partsLeft_ = 0;  // before the short name; 0 between names
    unsigned checksum_ = 0;
};

class Reader {
 public:
    explicit Reader(const std::vector<std::uint8_t>& image) : bytes_(image) {}

    FatImage Read() {
        ReadBootSector();
        ReadTable();
        const std::vector<std::uint8_t> root(bytes_.begin() + rootStart_, bytes_.begin() + dataStart_);
        ReadDirectory({root, {}, "", 0, 0});
        for (std::uint32_t cluster = 2; cluster < table_.size(); ++cluster) {
            Require(table_[cluster] == 0 || used_.count(cluster) == 1,
                    "lost cluster " + std::to_string(cluster));
            if (table_[cluster] == 0) ++result_.FreeClusters;
        }
        return std::move(result_);
    }

 private:
    std::uint32_t Number(std::size_t at, int count) const {
        std::uint32_t value = 0;
        for (int i = count - 1; i >= 0; --i)
            value = (value << 8) | bytes_.at(at + static_cast<std::size_t>(i));
        return value;
    }

    void ReadBootSector() {
        Require(bytes_.size() >= 512 && bytes_[510] == 0x55 && bytes_[511] == 0xAA, "no boot signature");
        Require(Number(11, 2) == 512, "sectors are not of 512 bytes");
        const std::uint32_t sectors = Number(19, 2);
        Require(bytes_.size() == sectors * 512, "the image's length is not that of its sectors");
        Require(bytes_[16] == 2 && Number(14, 2) == 1, "no floppy with two tables");
        Require(bytes_[21] == 0xF0 || bytes_[21] == 0xF9 || bytes_[21] == 0xFD, "no double-sided floppy");
        Require(Number(28, 4) == 0 && Number(32, 4) == 0 && bytes_[36] == 0 && bytes_[37] == 0 &&
                    bytes_[38] == 0x29,
                "fields that a floppy leaves 0");
        fatBytes_ = Number(22, 2) * 512;
        rootStart_ = static_cast<std::ptrdiff_t>(512 + 2 * fatBytes_);
        dataStart_ = rootStart_ + static_cast<std::ptrdiff_t>(Number(17, 2) * 32);
        result_.ClusterBytes = bytes_[13] * 512U;
        result_.Clusters = (sectors * 512 - static_cast<std::uint32_t>(dataStart_)) / result_.ClusterBytes;
        result_.Serial = Number(39, 4);
        result_.Label.assign(bytes_.begin() + 43, bytes_.begin() + 54);
        Require(std::string(bytes_.begin() + 54, bytes_.begin() + 62) == "FAT12   ", "not FAT12");
    }

    void ReadTable() {
        Require(std::equal(bytes_.begin() + 512, bytes_.begin() + 512 + fatBytes_,
                           bytes_.begin() + 512 + fatBytes_),
                "the two tables differ");
        Require(bytes_[512] == bytes_[21] && bytes_[513] == 0xFF && bytes_[514] == 0xFF,
                "the table starts wrongly");
        for (std::uint32_t cluster = 0; cluster < result_.Clusters + 2; ++cluster) {
            const std::uint32_t pair = Number(512 + cluster * 3 / 2, 2);
            table_.push_back((cluster % 2 == 0 ? pair : pair >> 4) & 0xFFF);
        }
        for (std::size_t at = 512 + (table_.size() * 3 + 1) / 2; at < 512 + fatBytes_; ++at)
            Require(bytes_[at] == 0, "bytes after the end of the table");
    }

    std::vector<std::uint32_t> Chain(std::uint32_t first, const std::string& path) {
        std::vector<std::uint32_t> chain;
        if (first == 0) return chain;
        for (std::uint32_t cluster = first; cluster < 0xFF8; cluster = table_[cluster]) {
            Require(cluster >= 2 && cluster < table_.size(), path + ": cluster out of range");
            Require(used_.insert(cluster).second, path + ": cluster used twice");
            chain.push_back(cluster);
        }
        return chain;
    }

    // Where a cluster begins in the image.
    std::ptrdiff_t PlaceOf(std::uint32_t cluster) const {
        return dataStart_ + static_cast<std::ptrdiff_t>((cluster - 2) * result_.ClusterBytes);
    }

    std::vector<std::uint8_t> Bytes(const std::vector<std::uint32_t>& chain) const {
        std::vector<std::uint8_t> all;
        for (const std::uint32_t cluster : chain) {
            const auto start = bytes_.begin() + PlaceOf(cluster);
            all.insert(all.end(), start, start + static_cast<std::ptrdiff_t>(result_.ClusterBytes));
        }
        return all;
    }

    static std::string DottedName(const std::string& raw) {
        const auto trimmed = [](std::string text) {
            text.erase(text.find_last_not_of(' ') + 1);
            return text;
        };
        const std::string base = trimmed(raw.substr(0, 8));
        const std::string extension = trimmed(raw.substr(8));
        return extension.empty() ? base : base + "." + extension;
    }

    // One directory: the root, which has no clusters, or a folder.
    struct Directory {
        std::vector<std::uint8_t> Table;
        std::vector<std::uint32_t> Clusters;
        std::string Prefix;  // of all paths in it
        std::uint32_t Self = 0;
        std::uint32_t Parent = 0;
    };

    // Where the entry at `at` of a directory begins in the image.
    std::size_t EntryPlace(const Directory& directory, std::size_t at) const {
        const std::ptrdiff_t place =
            directory.Self == 0 ? rootStart_ : PlaceOf(directory.Clusters[at / result_.ClusterBytes]);
        return static_cast<std::size_t>(place) + (directory.Self == 0 ? at : at % result_.ClusterBytes);
    }

    void ReadDirectory(const Directory& directory) {
        std::set<std::string> names;
        LongName longName(directory.Prefix);
        bool isEnded = false;
        for (std::size_t at = 0; at < directory.Table.size(); at += 32) {
            const std::uint8_t* const raw = directory.Table.data() + at;
            if (isEnded || raw[0] == 0) {
                Require(std::all_of(raw, raw + 32, [](std::uint8_t byte) { return byte == 0; }),
                        directory.Prefix + ": entries after the end");
                isEnded = true;
                continue;
            }
            if (raw[11] == 0x0F) {
                longName.AddPart(raw);
                continue;
            }
            result_.EntryPlaces.push_back(EntryPlace(directory, at));
            if (directory.Self != 0 && at < 64) {
                RequireOwnEntry(directory, raw, at == 0);
            } else {
                FatEntry entry = EntryOf(raw, directory.Prefix);
                const std::string shortName(raw, raw + 11);
                entry.Long = longName.TakeFor(shortName);
                Require(names.insert(shortName).second || entry.IsLabel(),
                        directory.Prefix + shortName + ": two of that name");
                Add(directory, std::move(entry), shortName, WordAt(raw, 26));
            }
        }
        longName.RequireNone();
    }

    static FatEntry EntryOf(const std::uint8_t* raw, const std::string& prefix) {
        FatEntry entry;
        entry.Attributes = raw[11];
        entry.Time = WordAt(raw, 22);
        entry.Date = WordAt(raw, 24);
        entry.Size = static_cast<std::uint32_t>(WordAt(raw, 28)) | static_cast<std::uint32_t>(WordAt(raw, 30))
                                                                       << 16;
        Require(WordAt(raw, 20) == 0 && raw[12] == 0,
                prefix + std::string(raw, raw + 11) + ": fields that DOS leaves 0");
        return entry;
    }

    // Checks "." (the first entry of a folder) or "..".
    static void RequireOwnEntry(const Directory& directory, const std::uint8_t* raw, bool isFirst) {
        const FatEntry entry = EntryOf(raw, directory.Prefix);
        Require(std::string(raw, raw + 11) == (isFirst ? ".          " : "..         "),
                directory.Prefix + ": no . and ..");
        Require(entry.IsFolder() && entry.Size == 0 &&
                    WordAt(raw, 26) == (isFirst ? directory.Self : directory.Parent),
                directory.Prefix + ": wrong . or ..");
    }

    void Add(const Directory& directory, FatEntry entry, const std::string& shortName, std::uint32_t first) {
        if (entry.IsLabel()) {
            Require(directory.Self == 0 && first == 0 && entry.Size == 0, "a label out of place");
            entry.Path = shortName;
            result_.Entries.push_back(std::move(entry));
            return;
        }
        entry.Path = directory.Prefix + DottedName(shortName);
        entry.Clusters = Chain(first, entry.Path);
        if (entry.IsFolder()) {
            Require(entry.Size == 0 && !entry.Clusters.empty(),
                    entry.Path + ": a folder with a size or without a cluster");
            result_.Entries.push_back(entry);
            ReadDirectory({Bytes(entry.Clusters), entry.Clusters, entry.Path + "/", first, directory.Self});
            return;
        }
        const std::size_t needed = (entry.Size + result_.ClusterBytes - 1) / result_.ClusterBytes;
        Require(entry.Clusters.size() == needed, entry.Path + ": the chain does not match the size");
        entry.Content = Bytes(entry.Clusters);
        Require(std::all_of(entry.Content.begin() + entry.Size, entry.Content.end(),
                            [](auto byte) { return byte == 0; }),
                entry.Path + ": bytes after the end of the file");
        entry.Content.resize(entry.Size);
        result_.Entries.push_back(std::move(entry));
    }

    const std::vector<std::uint8_t>& bytes_;
    std::uint32_t fatBytes_ = 0;
    std::ptrdiff_t rootStart_ = 0;
    std::ptrdiff_t dataStart_ = 0;
    std::vector<std::uint32_t> table_;
    std::set<std::uint32_t> used_;
    FatImage result_;
};

}  // namespace

const FatEntry& FatImage::At(const std::string& path) const {
    for (const FatEntry& entry : Entries)
        if (entry.Path == path) return entry;
    throw std::runtime_error("no entry " + path);
}

FatImage ReadFatImage(const std::vector<std::uint8_t>& image) {
    return Reader(image).Read();
}

}  // namespace tools::bfi::testing
