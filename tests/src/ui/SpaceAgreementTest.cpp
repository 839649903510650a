// Compares what the wizard's line says about a selection with what the image tool does with the same files.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "floppy/Geometry.h"
#include "floppy/ShortName.h"
#include "src/ui/DiskSpace.h"
#include "tests/support/ApplicationFolder.h"
#include "tests/tools/bfi/ImageFixture.h"
#include "tools/bfi/ImageBuilder.h"

namespace velbooter::testing {
namespace {

constexpr int kTrees = 24;

// Puts random files below cabs and selects them. The same seed gives the same files.
class RandomSelection {
 public:
    RandomSelection(Application& app, const ApplicationFolder& folder, std::uint32_t seed)
        : app_(app), folder_(folder), random_(seed) {
        folder.MakeFolder("cabs");
    }

    // Files of all sizes, and one after which a few clusters are left or missing.
    void AddUpToTheDataArea(const floppy::Geometry& geometry) {
        const std::uint64_t capacity = geometry.DataClusters() * geometry.ClusterBytes();
        const std::uint64_t share = capacity / 40;
        std::uint64_t taken = 0;
        for (std::uint64_t count = Below(40); count > 0; --count) {
            const std::uint64_t bytes = Below(3) == 0 ? Below(2) : Below(share);
            Add(bytes);
            taken += geometry.ClustersFor(bytes) * geometry.ClusterBytes();
        }
        // The folders take one cluster each, or a few more.
        const std::uint64_t folders = folders_.size() - 1;
        const std::uint64_t left = (folders + Below(7)) * geometry.ClusterBytes();
        Add(capacity + 3 * geometry.ClusterBytes() - taken - left);
    }

    // Small files whose names nearly fill the root directory or are too many for it.
    void AddUpToTheRoot(const floppy::Geometry& geometry) {
        folders_.insert(folders_.end(), 11, "");
        folderOdds_ = 40;
        // A name takes two entries on average, and some names are in folders.
        for (std::uint64_t count = geometry.RootEntries / 2 + Below(30); count > 0; --count) Add(Below(2));
    }

 private:
    // The remainder is the same with every library; the results of its distributions are not.
    std::size_t Below(std::uint64_t limit) { return static_cast<std::size_t>(random_() % limit); }

    std::string Letters(std::uint64_t count, const std::string& alphabet) {
        std::string text;
        for (; count > 0; --count) text += alphabet[Below(alphabet.size())];
        return text;
    }

    // Returns the path of a new name in one of the folders: half of the names are of the form 8.3.
    std::string NewPath() {
        static const std::string kShort = "abcdefGHIJKL0123456789_-";
        static const std::string kLong = kShort + "+, =[].";
        for (;;) {
            std::string path = folders_[Below(folders_.size())];
            if (Below(2) == 0) {
                path += Letters(1 + Below(8), kShort);
                if (Below(2) == 0) path += "." + Letters(1 + Below(3), kShort);
            } else {
                path += "n" + Letters(Below(40), kLong) + "n";
            }
            std::string key = path;
            std::transform(key.begin(), key.end(), key.begin(), [](char c) { return floppy::UpperAscii(c); });
            if (names_.insert(key).second) return path;
        }
    }

    void Add(std::uint64_t bytes) {
        // A folder is created together with the first file in it.
        if (Below(folderOdds_) == 0) folders_.push_back(NewPath() + "\\");
        const bool isLone = Below(folderOdds_) == 0;
        const std::string path =
            isLone ? folders_.back() + "lone" + std::to_string(names_.size()) : NewPath();
        if (isLone) names_.insert(path);
        folder_.Write("cabs\\" + path, std::string(static_cast<std::size_t>(bytes), 'x'));
        app_.Wizard.LstFiles.AddItem(path);
        app_.Wizard.LstFiles.Select(app_.Wizard.LstFiles.ListCount() - 1, true);
    }

    Application& app_;
    const ApplicationFolder& folder_;
    std::mt19937 random_;
    std::vector<std::string> folders_{""};  // each with a backslash at its end
    std::set<std::string> names_;
    std::uint64_t folderOdds_ = 6;  // one file out of this many gets a new folder
};

// What the image tool reports about a tree.
struct Judgement {
    bool Fits = false;
    std::optional<std::uint64_t> Bytes;  // what the tree takes of the data area, if the tool reports it
};

// The type of the disk, "144" or "288", is the parameter.
class SpaceAgreement : public ApplicationTest, public ::testing::WithParamInterface<std::string> {
 protected:
    SpaceAgreement() {
        const auto sector = tools::bfi::testing::SampleBootSector();
        Folder.Write("boot.bin", {sector.begin(), sector.end()});
        ChooseOption(App.Wizard, GetParam() == "288" ? &FrmWizard::OptImage28 : &FrmWizard::OptImage14);
    }

    std::uint64_t Capacity() const { return Format.DataClusters() * Format.ClusterBytes(); }

    void StartAnew() {
        Folder.Remove("cabs");
        App.Wizard.LstFiles.Clear();
    }

    Judgement JudgementOfTheTool() {
        const std::string error = tools::testing::ErrorOf([&] {
            tools::bfi::BuildImage(
                {Folder.At("boot.bin"), "LABEL", &Format, Folder.At("disk.img"), Folder.At("cabs")});
        });
        if (error == "(no error)") {
            const std::string image = Folder.Read("disk.img");
            const auto read = tools::bfi::testing::ReadFatImage({image.begin(), image.end()});
            return {true, Capacity() - read.FreeClusters * Format.ClusterBytes()};
        }
        std::smatch missing;
        if (std::regex_search(error, missing, std::regex(" disk: ([0-9]+) bytes are missing$")))
            return {false, Capacity() + std::stoull(missing[1])};
        EXPECT_THAT(error, ::testing::HasSubstr(": the root directory of a "));
        return {false, std::nullopt};
    }

    // Compares the line with the tool's result, which decides whether the files fit.
    void Compare(const Judgement& tool) {
        MeasureSpace(App);
        ShowSpace(App);
        EXPECT_EQ(!tool.Fits, App.Wizard.LblSpace.Warning);
        if (!tool.Bytes) return;
        EXPECT_EQ("Selected files: " + std::to_string(*tool.Bytes / 1024) + " KB. A " + Format.Name +
                      " disk holds " + std::to_string(Capacity() / 1024) + " KB.",
                  App.Wizard.LblSpace.Caption);
    }

    const floppy::Geometry& Format = *floppy::GeometryOfType(GetParam());
};

TEST_P(SpaceAgreement, FilesNearTheEndOfTheDataArea) {
    int fitting = 0;
    for (std::uint32_t seed = 1; seed <= kTrees; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        StartAnew();
        RandomSelection(App, Folder, seed).AddUpToTheDataArea(Format);
        const Judgement tool = JudgementOfTheTool();
        EXPECT_TRUE(tool.Bytes);
        Compare(tool);
        if (tool.Fits) ++fitting;
    }
    EXPECT_GT(fitting, kTrees / 6) << "trees on both sides of the limit";
    EXPECT_LT(fitting, kTrees - kTrees / 6);
}

TEST_P(SpaceAgreement, NamesNearTheEndOfTheRootDirectory) {
    int fitting = 0;
    for (std::uint32_t seed = 1; seed <= kTrees; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        StartAnew();
        RandomSelection(App, Folder, seed).AddUpToTheRoot(Format);
        const Judgement tool = JudgementOfTheTool();
        Compare(tool);
        if (tool.Fits) ++fitting;
    }
    EXPECT_GT(fitting, kTrees / 6) << "trees on both sides of the limit";
    EXPECT_LT(fitting, kTrees - kTrees / 6);
}

INSTANTIATE_TEST_SUITE_P(Floppy, SpaceAgreement, ::testing::Values("144", "288"),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace velbooter::testing
