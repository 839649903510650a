#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

#include "tests/tools/bfi/ImageFixture.h"

namespace tools::bfi::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

// There is an older image of the same name; whatever goes wrong, it must not change.
class Fault : public ImageTest {
 protected:
    Fault() {
        Files.Write("tree/a.txt", "a");
        Files.Write("out.img", "older image");
    }

    void ExpectRefusal(const std::string& expected) {
        EXPECT_EQ(expected, Refusal());
        ExpectOldImage();
    }

    void ExpectOldImage() const {
        const Bytes bytes = Files.Read("out.img");
        EXPECT_EQ("older image", std::string(bytes.begin(), bytes.end()));
        EXPECT_EQ(3U, Files.Names().size()) << "nothing else is left";
    }
};

TEST_P(Fault, AReadOnlyImageIsNotReplaced) {
    Files.SetReadOnly("out.img", true);
    ExpectRefusal(Files.Text("out.img") + ": is read-only");
}

TEST_P(Fault, AFolderInThePlaceOfTheImageIsRefused) {
    ImageRequest request = Request();
    request.ImageFile = Files.Text("tree");
    EXPECT_EQ(Files.Text("tree") + ": is a folder", tools::testing::ErrorOf([&] { BuildImage(request); }));
    ExpectOldImage();
}

TEST_P(Fault, ATreeThatDoesNotFitChangesNothing) {
    Files.Write("tree/big", RandomBytes(3'000'000, 1));
    EXPECT_THAT(Refusal(), HasSubstr("bytes are missing"));
    ExpectOldImage();
}

TEST_P(Fault, AMissingFolderIsNamed) {
    ImageRequest request = Request();
    request.Folder = Files.Text("none");
    EXPECT_THAT(tools::testing::ErrorOf([&] { BuildImage(request); }),
                StartsWith(Files.Text("none") + ": this folder cannot be read: "));
    ExpectOldImage();
}

TEST_P(Fault, AFileInThePlaceOfTheFolderIsNamed) {
    ImageRequest request = Request();
    request.Folder = Files.Text("boot.bin");
    EXPECT_THAT(tools::testing::ErrorOf([&] { BuildImage(request); }),
                StartsWith(Files.Text("boot.bin") + ": this folder cannot be read: "));
    ExpectOldImage();
}

TEST_P(Fault, AWrongBootSectorChangesNothing) {
    Files.Write("boot.bin", "short");
    ExpectRefusal(Files.Text("boot.bin") + ": a boot sector file must be exactly 512 bytes long");
}

TEST_P(Fault, AnIllegalLabelChangesNothing) {
    ImageRequest request = Request();
    request.Label = "a*b";
    EXPECT_THAT(tools::testing::ErrorOf([&] { BuildImage(request); }),
                StartsWith("-l=a*b: a volume label holds only"));
    ExpectOldImage();
}

TEST_P(Fault, AnOldImageIsReplacedWhenNothingIsWrong) {
    EXPECT_EQ(Bytes{'a'}, Build().At("A.TXT").Content);
}

TEST_P(Fault, TheBootSectorIsNotReplaced) {
    ImageRequest request = Request();
    for (const std::string name : {"boot.bin", "tree/../boot.bin"}) {
        request.ImageFile = Files.Text(name);
        EXPECT_EQ(tools::testing::ErrorOf([&] { BuildImage(request); }),
                  request.ImageFile + ": is the boot sector itself, not an image");
    }
    EXPECT_EQ(Files.Read("boot.bin"), SampleBootSector());
    ExpectOldImage();
}

TEST_P(Fault, NothingIsReplacedOrMadeInTheTree) {
    ImageRequest request = Request();
    Files.MakeFolder("tree/sub");
    for (const std::string name : {"tree/a.txt", "tree/new.img", "tree/sub/new.img", "tree/none/new.img"}) {
        request.ImageFile = Files.Text(name);
        EXPECT_EQ(
            tools::testing::ErrorOf([&] { BuildImage(request); }),
            request.ImageFile + ": lies in the folder that the image is built from, " + Files.Text("tree"));
    }
    EXPECT_EQ(Bytes{'a'}, Files.Read("tree/a.txt"));
    EXPECT_EQ(2U, Files.Names("tree").size());
    ExpectOldImage();
}

TEST_P(Fault, AFolderWhosePathBeginsAsTheTreesIsAnother) {
    ImageRequest request = Request();
    for (const std::string name : {"tree2/new.img", "tree/../new.img"}) {
        request.ImageFile = Files.Text(name);
        BuildImage(request);
        EXPECT_EQ(Bytes{'a'}, ReadFatImage(Files.Read(name)).At("A.TXT").Content);
    }
}

TEST_P(Fault, MissingParentFoldersOfTheImageAreMade) {
    ImageRequest request = Request();
    request.ImageFile = Files.Text("one/two/disk.img");
    BuildImage(request);
    EXPECT_EQ(Bytes{'a'}, ReadFatImage(Files.Read("one/two/disk.img")).At("A.TXT").Content);
}

TEST_P(Fault, EitherSlashLeadsToTheSameFiles) {
    Files.Write("in/boot.bin", SampleBootSector());
    ImageRequest request = Request();
    request.BootSectorFile = Files.Text() + "\\in\\boot.bin";
    request.ImageFile = Files.Text() + "\\one/two\\disk.img";
    request.Folder = Files.Text() + "/tree\\";
    BuildImage(request);
    EXPECT_TRUE(Files.Exists("one/two/disk.img"));
}

#ifndef _WIN32
TEST_P(Fault, NamesThatDosCannotTellApartAreRefused) {
    Files.Write("tree/A.TXT", "A");
    ExpectRefusal(Files.Text("tree/") + "A.TXT and a.txt have the same name on a DOS disk");
}

TEST_P(Fault, ANameThatCannotBeStoredIsRefusedWithItsPath) {
    Files.Write("tree/sub/nul.txt", "x");
    ExpectRefusal(Files.Text("tree/sub/") + "nul.txt: DOS takes this name for a device");
}

TEST_P(Fault, ALinkToAFolderIsRefusedAndNotFollowedInCircles) {
    std::filesystem::create_directory_symlink("..", Files.Path("tree/up"));
    ExpectRefusal(Files.Text("tree/") + "up: is a link to a folder, which a DOS disk cannot hold");
}

TEST_P(Fault, APipeIsRefusedAndNotWaitedFor) {
    ASSERT_EQ(0, mkfifo(Files.Path("tree/pipe").c_str(), 0600));
    ExpectRefusal(Files.Text("tree/") + "pipe: is neither a file nor a folder");
}

TEST_P(Fault, ALinkToAFileIsStoredAsThatFile) {
    std::filesystem::create_symlink(Files.Path("boot.bin"), Files.Path("tree/linked.bin"));
    EXPECT_EQ(SampleBootSector(), Build().At("LINKED.BIN").Content);
}
#endif

VELBOOTER_EVERY_FORMAT(Fault);

}  // namespace
}  // namespace tools::bfi::testing
