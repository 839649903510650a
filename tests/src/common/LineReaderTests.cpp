#include "src/common/LineReader.h"

#include <gtest/gtest.h>

#include <vector>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;
using Lines = std::vector<std::string>;

class LineReading : public ::testing::Test {
 protected:
    Lines LinesOf(const std::string& content) {
        LineReader reader(Folder.Write("text.txt", content));
        Lines lines;
        while (const std::optional<std::string> line = reader.Next()) lines.push_back(*line);
        EXPECT_FALSE(reader.Next()) << "the end stays the end";
        return lines;
    }

    int NumberOfOpening(const std::string& file) {
        try {
            LineReader reader(file);
            while (reader.Next()) {
            }
        } catch (const RuntimeError& error) {
            EXPECT_EQ(file, error.File);
            return error.Number;
        }
        return 0;
    }

    ApplicationFolder Folder;
};

TEST_F(LineReading, CrLfAndLfAreTheSame) {
    EXPECT_EQ((Lines{"one", "", "two"}), LinesOf("one\r\n\r\ntwo\r\n"));
    EXPECT_EQ((Lines{"one", "", "two"}), LinesOf("one\n\ntwo\n"));
    EXPECT_EQ((Lines{"one", "", "two"}), LinesOf("one\r\n\ntwo\n"));
}

TEST_F(LineReading, ALastLineWithoutALineEndCounts) {
    EXPECT_EQ((Lines{"one", "two"}), LinesOf("one\r\ntwo"));
    EXPECT_EQ((Lines{"x"}), LinesOf("x"));
}

TEST_F(LineReading, AnEmptyFileHasNoLineAndALineEndAloneIsOne) {
    EXPECT_EQ((Lines{}), LinesOf(""));
    EXPECT_EQ((Lines{""}), LinesOf("\n"));
    EXPECT_EQ((Lines{""}), LinesOf("\r\n"));
}

TEST_F(LineReading, BlanksAndNulsAreKept) {
    EXPECT_EQ((Lines{"  a\t ", "b\0c"s, "\0"s}), LinesOf("  a\t \r\nb\0c\r\n\0\r\n"s));
}

TEST_F(LineReading, LineEndsMayFallAnywhere) {
    // Lines of growing length put the CR and the LF on every side of any buffer's edge.
    std::string content;
    Lines expected;
    for (size_t length = 0; length < 700; ++length) {
        expected.emplace_back(length, 'x');
        content += expected.back() + "\r\n";
    }
    EXPECT_EQ(expected, LinesOf(content));
    for (const size_t size : {1023u, 4095u, 8191u, 16383u, 32767u, 65535u}) {
        EXPECT_EQ((Lines{std::string(size, 'y'), "z"}), LinesOf(std::string(size, 'y') + "\r\nz")) << size;
    }
}

TEST_F(LineReading, ALineOfTenMegabytesIsOneLine) {
    const std::string huge(10'000'000, 'h');
    const Lines lines = LinesOf(huge + "\r\nend\r\n");
    ASSERT_EQ(2u, lines.size());
    EXPECT_TRUE(lines[0] == huge);
    EXPECT_EQ("end", lines[1]);
}

TEST_F(LineReading, AMissingFileIsError53AndAMissingFolderError76) {
    EXPECT_EQ(kFileNotFound, NumberOfOpening(Folder.At("missing.txt")));
    EXPECT_EQ(kPathNotFound, NumberOfOpening(Folder.At("nowhere\\missing.txt")));
}

TEST_F(LineReading, ALockedFileIsError70) {
    const std::string file = Folder.Write("locked.txt", "x");
    LockedFile lock(file);
    EXPECT_EQ(kPermissionDenied, NumberOfOpening(file));
}

TEST_F(LineReading, AFolderIsAnError) {
    EXPECT_NE(0, NumberOfOpening(Folder.MakeFolder("folder.ini")));
}

}  // namespace
}  // namespace velbooter::testing
