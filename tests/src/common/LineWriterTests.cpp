#include "src/common/LineWriter.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/LineReader.h"
#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

class LineWriting : public ::testing::Test {
 protected:
    /// Returns the number of the error that making `file` raises; 0 when it raises none.
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
    LineWriter writer("Z:\\dev\\full");  // the host's file that never has room
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
