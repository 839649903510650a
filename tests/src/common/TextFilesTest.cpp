#include "src/common/TextFiles.h"

#include <gtest/gtest.h>
#include <windows.h>

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

TEST_F(LineReading, SpacesAndNulsAreKept) {
    EXPECT_EQ((Lines{"  a\t ", "b\0c"s, "\0"s}), LinesOf("  a\t \r\nb\0c\r\n\0\r\n"s));
}

TEST_F(LineReading, LineEndsMayFallAnywhere) {
    // Lines of growing length put the CR and the LF at every place around the end of a buffer.
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

class LineWriting : public ::testing::Test {
 protected:
    /// Returns the number of the error that creating `file` raises; 0 when it raises none.
    static int NumberOfMaking(const std::string& file) {
        try {
            LineWriter writer(file);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(file, error.File);
            return error.Number;
        }
        return 0;
    }

    ApplicationFolder Folder;
};

TEST_F(LineWriting, EveryLineEndsInCrLf) {
    {
        LineWriter writer(Folder.At("a.txt"));
        for (const char* line : {"one", "", "  two \t", "[three]=\"x\""}) writer.Write(line);
    }
    EXPECT_EQ("one\r\n\r\n  two \t\r\n[three]=\"x\"\r\n", Folder.Read("a.txt"));
}

TEST_F(LineWriting, BytesAreWrittenAsTheyAre) {
    {
        LineWriter writer(Folder.At("a.txt"));
        writer.Write("B\xFCro\0x"s);
        writer.Write("a\nb\rc");
    }
    EXPECT_EQ("B\xFCro\0x\r\na\nb\rc\r\n"s, Folder.Read("a.txt"));
}

TEST_F(LineWriting, ANewFileIsEmpty) {
    { LineWriter writer(Folder.At("a.txt")); }
    EXPECT_EQ("", Folder.Read("a.txt"));
}

TEST_F(LineWriting, AnOldFileIsEmptied) {
    Folder.Write("a.txt", "old and longer");
    { LineWriter writer(Folder.At("a.txt")); }
    EXPECT_EQ("", Folder.Read("a.txt"));
}

TEST_F(LineWriting, WhatWasWrittenCanBeReadAtOnce) {
    LineWriter writer(Folder.At("a.txt"));
    writer.Write("one");
    EXPECT_EQ("one\r\n", Folder.Read("a.txt"));
}

TEST_F(LineWriting, WhatTheLineReaderReadsIsWhatWasWritten) {
    const std::string lines[] = {"one", "", std::string(100'000, 'x'), " last "};
    {
        LineWriter writer(Folder.At("a.txt"));
        for (const std::string& line : lines) writer.Write(line);
    }
    LineReader reader(Folder.At("a.txt"));
    for (const std::string& line : lines) EXPECT_TRUE(reader.Next() == line) << line.size();
    EXPECT_FALSE(reader.Next());
}

TEST_F(LineWriting, AFileThatCannotBeMadeIsAnError) {
    EXPECT_EQ(kPathNotFound, NumberOfMaking(Folder.At("nowhere\\a.txt")));
    EXPECT_NE(0, NumberOfMaking(Folder.MakeFolder("folder")));
    Folder.Write("locked.txt", "old");
    {
        LockedFile lock(Folder.At("locked.txt"));
        EXPECT_EQ(kPermissionDenied, NumberOfMaking(Folder.At("locked.txt")));
    }
    EXPECT_EQ("old", Folder.Read("locked.txt"));
}

TEST_F(LineWriting, NoOtherWriterCanTakeTheFile) {
    LineWriter writer(Folder.At("a.txt"));
    EXPECT_EQ(kPermissionDenied, NumberOfMaking(Folder.At("a.txt")));
    writer.Write("one");
    EXPECT_EQ("one\r\n", Folder.Read("a.txt"));
}

TEST_F(LineWriting, AFullDiskIsError61) {
    LineWriter writer("Z:\\dev\\full");  // a device of the host that is always full
    try {
        writer.Write("one");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kDiskFull, error.Number);
        EXPECT_EQ("Z:\\dev\\full", error.File);
    }
}

TEST_F(LineWriting, OneLineGoesToEveryFileThatIsGiven) {
    {
        LineWriter first(Folder.At("1.txt"));
        LineWriter second(Folder.At("2.txt"));
        LineWriter third(Folder.At("3.txt"));
        WriteToFile("to one", first);
        WriteToFile("to two", first, &second);
        WriteToFile("to three", first, &second, &third);
        WriteToFile("to first and third", first, nullptr, &third);
    }
    EXPECT_EQ("to one\r\nto two\r\nto three\r\nto first and third\r\n", Folder.Read("1.txt"));
    EXPECT_EQ("to two\r\nto three\r\n", Folder.Read("2.txt"));
    EXPECT_EQ("to three\r\nto first and third\r\n", Folder.Read("3.txt"));
}

TEST_F(LineWriting, TheFilesBeforeTheOneThatFailsHaveTheLine) {
    LineWriter first(Folder.At("1.txt"));
    LineWriter second("Z:\\dev\\full");
    LineWriter third(Folder.At("3.txt"));
    EXPECT_THROW(WriteToFile("line", first, &second, &third), RuntimeError);
    EXPECT_EQ("line\r\n", Folder.Read("1.txt"));
    EXPECT_EQ("", Folder.Read("3.txt"));
}

}  // namespace
}  // namespace velbooter::testing
