#pragma once
// What the tests of whole images share: a folder with a boot sector and a tree, and functions to build an
// image from it and read it back.

#include <gtest/gtest.h>

#include <string>

#include "tests/floppy/EveryFormat.h"
#include "tests/support/TestFolder.h"
#include "tests/tools/bfi/FatReader.h"
#include "tools/bfi/ImageBuilder.h"

namespace tools::bfi::testing {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

/// Returns a boot sector that bfi accepts, with random bytes for code.
inline Bytes SampleBootSector() {
    Bytes sector = RandomBytes(512, 4711);
    const std::string start = "\xEB\x3C\x90MSWIN4.1";
    std::copy(start.begin(), start.end(), sector.begin());
    sector[510] = 0x55;
    sector[511] = 0xAA;
    return sector;
}

/// A test whose parameter is the type of the disk. The tree is in "tree", the image is "out.img".
class ImageTest : public ::testing::TestWithParam<std::string> {
 protected:
    ImageTest() {
        Files.Write("boot.bin", SampleBootSector());
        Files.MakeFolder("tree");
    }

    const floppy::Geometry& Format() const { return *floppy::GeometryOfType(GetParam()); }

    ImageRequest Request() const {
        return {Files.Text("boot.bin"), "Velstart", &Format(), Files.Text("out.img"), Files.Text("tree")};
    }

    /// Builds the image and reads it back.
    FatImage Build() const {
        BuildImage(Request());
        return ReadFatImage(Files.Read("out.img"));
    }

    /// Returns the error; empty when the image is built.
    std::string Refusal() const {
        const std::string error = tools::testing::ErrorOf([&] { BuildImage(Request()); });
        return error == "(no error)" ? "" : error;
    }

    const tools::testing::TestFolder Files;
};

}  // namespace tools::bfi::testing
