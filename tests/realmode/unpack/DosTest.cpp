// UNPACK.EXE itself on an emulated DOS: what it unpacks, with which memory, and how it reports failures.

#include <gmock/gmock.h>

#include <filesystem>

#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tests/realmode/unpack/DosSession.h"
#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/realmode/unpack/RandomFiles.h"
#include "tests/realmode/unpack/Shell.h"
#include "tests/tools/cabarc/InTestFolder.h"

namespace realmode::unpack::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StrEq;
using tools::cabarc::testing::ReadBytes;
using tools::cabarc::testing::RunCabarc;
using tools::cabarc::testing::TreeOf;
using tools::cabarc::testing::WriteBytes;
using Keys = DosSession::Keys;

/// A machine with the cabinets that a test puts on its drive C:.
class UnpackOnDos : public tools::cabarc::testing::InTestFolder {
 protected:
    static void Pack(const std::string& method, const std::string& cabinet) {
        const auto packed = RunCabarc("-m " + method + " -p -r -P in n c/" + cabinet + " in\\*");
        ASSERT_EQ(0, packed.ExitCode) << packed.Errors;
    }

    static BuiltCabinet Small(const std::string& name = "F") {
        BuiltCabinet cabinet = OneFile(kStored, {{Text("abc"), 3}});
        cabinet.Members[0].Name = name;
        return cabinet;
    }

    static void ExpectFault(const DosSession::Result& result, int code, const std::string& line) {
        EXPECT_EQ(code, result.ExitCode) << line;
        ASSERT_FALSE(result.Lines.empty()) << line;
        EXPECT_EQ(line, result.Lines.back());
    }
};

TEST_F(UnpackOnDos, EveryMethodGivesTheFilesBack) {
    DosSession dos;
    MakeRandomFiles("in", 11, 150'000);
    const std::vector<std::string> methods = {"NONE",   "MSZIP",  "LZX:15", "LZX:16", "LZX:17",
                                              "LZX:18", "LZX:19", "LZX:20", "LZX:21"};
    for (std::size_t i = 0; i < methods.size(); ++i) {
        const std::string number = std::to_string(i);
        Pack(methods[i], number + ".CAB");
        dos.Add("UNPACK.EXE " + number + ".CAB OUT" + number);
    }
    const auto results = dos.Run();
    const auto files = TreeOf("in");
    for (std::size_t i = 0; i < methods.size(); ++i) {
        const std::string number = std::to_string(i);
        EXPECT_EQ(0, results[i].ExitCode) << methods[i];
        EXPECT_EQ(files.size(), results[i].Lines.size()) << "a line for each file";
        EXPECT_THAT(results[i].Lines, Contains(StrEq("OUT" + number + "\\FAR")));
        EXPECT_TRUE(TreeOf("c/OUT" + number) == files) << methods[i] << " gives other files or contents";
        std::filesystem::remove_all("out");
        ASSERT_EQ(0, RunShell("cabextract -q -d out c/" + number + ".CAB").ExitCode);
        EXPECT_TRUE(TreeOf("c/OUT" + number) == TreeOf("out")) << "cabextract sees it in another way";
    }
}

TEST_F(UnpackOnDos, TheWindowIsInXmsWhenItDoesNotFit) {
    MakeRandomFiles("in", 12, 500'000);
    DosSession dos;
    Pack("LZX:21", "21.CAB");
    Pack("LZX:17", "17.CAB");
    Pack("MSZIP", "ZIP.CAB");
    const std::vector<std::string> cabinets = {"21", "17", "ZIP"};
    const std::vector<unsigned> kilobytes = {0, 300, 150};
    for (const unsigned memory : kilobytes)
        for (const std::string& cabinet : cabinets)
            dos.Add("UNPACK.EXE " + cabinet + ".CAB " + cabinet + "." + std::to_string(memory), memory);
    const auto results = dos.Run();
    const auto files = TreeOf("in");
    for (const unsigned memory : kilobytes) {
        for (const std::string& cabinet : cabinets) {
            const std::string folder = "c/" + cabinet + "." + std::to_string(memory);
            EXPECT_TRUE(TreeOf(folder) == files) << folder;
        }
    }
    for (const auto& result : results) EXPECT_EQ(0, result.ExitCode);
}

TEST_F(UnpackOnDos, WithoutXmsTheWindowMustFit) {
    MakeRandomFiles("in", 13, 450'000);
    DosSession dos(false);
    Pack("LZX:21", "LARGE.CAB");
    Pack("LZX:18", "SMALL.CAB");
    const std::size_t large = dos.Add("UNPACK.EXE LARGE.CAB LARGE");
    const std::size_t small = dos.Add("UNPACK.EXE SMALL.CAB SMALL");
    const auto results = dos.Run();
    ExpectFault(results[large], 7, "UNPACK: LARGE.CAB needs more XMS memory");
    EXPECT_FALSE(std::filesystem::exists("c/LARGE")) << "not even the folder is created";
    EXPECT_EQ(0, results[small].ExitCode);
    EXPECT_TRUE(TreeOf("c/SMALL") == TreeOf("in"));
}

TEST_F(UnpackOnDos, TheXmsIsGivenBack) {
    // Each takes one of the three megabytes.
    MakeRandomFiles("in", 14, 550'000);
    DosSession dos;
    Pack("LZX:20", "X.CAB");
    for (int i = 0; i < 6; ++i) dos.Add("UNPACK.EXE X.CAB OUT", 150, i % 2 == 0 ? Keys::None : Keys::Break);
    const auto results = dos.Run();
    for (std::size_t i = 0; i < results.size(); ++i) EXPECT_EQ(i % 2 == 0 ? 0 : 10, results[i].ExitCode);
}

TEST_F(UnpackOnDos, TooLittleConventionalMemoryIsSaid) {
    DosSession dos;
    WriteBytes("in/A", tools::testing::TextLike(100'000));
    Pack("LZX:21", "X.CAB");
    const auto result = dos.RunOne("UNPACK.EXE X.CAB OUT", 80);
    ExpectFault(result, 7, "UNPACK: X.CAB needs more conventional memory");
}

TEST_F(UnpackOnDos, TimesAndAttributesAreRestored) {
    DosSession dos;
    BuiltCabinet cabinet = Small();
    cabinet.Members = {{"PLAIN", 1, 0, 0, 0x20, 0x1234, 0xABCD}, {"HIDDEN", 2, 1, 0, 0xE7, 0x2345, 0xBCDE}};
    cabinet.Members.push_back({"EMPTY", 0, 3, 0, 0x00, 0x3456, 0x4DEF});
    WriteBytes("c/X.CAB", cabinet.Build());
    const auto result = dos.RunOne("UNPACK.EXE X.CAB");
    EXPECT_EQ(0, result.ExitCode);
    EXPECT_THAT(result.Lines, ElementsAre("PLAIN", "HIDDEN", "EMPTY"));
    EXPECT_THAT(result.Stamps, ElementsAre("time ABCD1234", "time BCDE2345", "attributes 0027",
                                           "time 4DEF3456", "attributes 0000"));
}

TEST_F(UnpackOnDos, TheTargetMayBeAnyFolder) {
    DosSession dos;
    BuiltCabinet cabinet = Small("SUB\\F");
    WriteBytes("c/X.CAB", cabinet.Build());
    const std::vector<std::pair<std::string, std::string>> targets = {
        {"", "SUB\\F"},         {".", ".\\SUB\\F"},          {"D1\\D2\\D3", "D1\\D2\\D3\\SUB\\F"},
        {"D4\\", "D4\\SUB\\F"}, {"D5/D6", "D5\\D6\\SUB\\F"}, {"C:", "C:SUB\\F"},
        {"C:\\", "C:\\SUB\\F"}, {"\\D7\\", "\\D7\\SUB\\F"},  {"C:\\D8\\D9", "C:\\D8\\D9\\SUB\\F"}};
    for (const auto& [target, line] : targets) dos.Add("UNPACK.EXE X.CAB " + target);
    const auto results = dos.Run();
    for (std::size_t i = 0; i < targets.size(); ++i) {
        EXPECT_EQ(0, results[i].ExitCode) << targets[i].first;
        EXPECT_THAT(results[i].Lines, ElementsAre(targets[i].second));
    }
    for (const char* folder : {"c", "c/D1/D2/D3", "c/D4", "c/D5/D6", "c/D7", "c/D8/D9"})
        EXPECT_EQ(Text("abc"), ReadBytes(std::string(folder) + "/SUB/F")) << folder;
}

TEST_F(UnpackOnDos, ExistingFilesAreReplaced) {
    DosSession dos;
    WriteBytes("c/OUT/F", Text("a much longer text than the one in the cabinet"));
    WriteBytes("c/X.CAB", Small().Build());
    EXPECT_EQ(0, dos.RunOne("UNPACK.EXE X.CAB OUT").ExitCode);
    EXPECT_EQ(Text("abc"), ReadBytes("c/OUT/F"));
}

TEST_F(UnpackOnDos, AWrongCallGetsALineOfUsage) {
    DosSession dos;
    WriteBytes("c/X.CAB", Small().Build());
    for (const char* arguments : {"", " /?", " X.CAB OUT MORE"})
        dos.Add(std::string("UNPACK.EXE") + arguments);
    for (const auto& result : dos.Run()) {
        EXPECT_EQ(1, result.ExitCode);
        EXPECT_THAT(result.Lines, ElementsAre("Usage: UNPACK CABINET [FOLDER]"));
    }
    EXPECT_FALSE(std::filesystem::exists("c/F"));
}

TEST_F(UnpackOnDos, EachRefusalHasItsLineAndItsExitCode) {
    DosSession dos;
    const auto add = [&dos](const BuiltCabinet& cabinet, const std::string& name) {
        WriteBytes("c/" + name, cabinet.Build());
        return dos.Add("UNPACK.EXE " + name + " OUT");
    };
    const std::size_t missing = dos.Add("UNPACK.EXE NONE.CAB OUT");
    WriteBytes("c/TEXT.CAB", Text("this is a text"));
    const std::size_t text = dos.Add("UNPACK.EXE TEXT.CAB OUT");
    BuiltCabinet changed = Small();
    changed.Flags = 1;
    const std::size_t set = add(changed, "SET.CAB");
    changed = Small();
    changed.Folders[0].Method = 2;
    const std::size_t method = add(changed, "METHOD.CAB");
    changed = Small();
    changed.Folders[0].Records[0].HasWrongChecksum = true;
    const std::size_t checksum = add(changed, "SUM.CAB");
    Bytes cut = Small().Build();
    cut.pop_back();
    WriteBytes("c/CUT.CAB", cut);
    const std::size_t end = dos.Add("UNPACK.EXE CUT.CAB OUT");
    const std::size_t leaves = add(Small("..\\F"), "UP.CAB");
    const std::size_t longName = add(Small("LONGNAMES.X"), "LONG.CAB");
    const std::size_t control = add(Small("A\x1B[2J"), "ESC.CAB");
    const auto results = dos.Run();
    ExpectFault(results[missing], 2, "UNPACK: NONE.CAB cannot be opened");
    ExpectFault(results[text], 3, "UNPACK: TEXT.CAB is not a cabinet");
    ExpectFault(results[set], 4, "UNPACK: SET.CAB is part of a set of cabinets");
    ExpectFault(results[method], 4, "UNPACK: METHOD.CAB is packed with an unknown method");
    ExpectFault(results[checksum], 5, "UNPACK: SUM.CAB is damaged: a checksum is wrong");
    ExpectFault(results[end], 5, "UNPACK: CUT.CAB is damaged: it ends early");
    ExpectFault(results[leaves], 6, "UNPACK: ..\\F would leave the target folder");
    ExpectFault(results[longName], 6, "UNPACK: LONGNAMES.X is not a name for DOS");
    ExpectFault(results[control], 6, "UNPACK: A?[2J is not a name for DOS");
    EXPECT_THAT(TreeOf("c/OUT"), IsEmpty()) << "the file that could not be completed is deleted";
    EXPECT_FALSE(std::filesystem::exists("c/F"));
}

TEST_F(UnpackOnDos, WhatStandsInTheWayIsNamed) {
    DosSession dos;
    std::filesystem::create_directories("c/OUT/F");
    WriteBytes("c/OUT/SUB", Text("a file"));
    WriteBytes("c/F.CAB", Small().Build());
    WriteBytes("c/SUB.CAB", Small("SUB\\F").Build());
    WriteBytes("c/DEVICE.CAB", Small("CON").Build());
    for (const char* name : {"F", "SUB", "DEVICE"}) dos.Add(std::string("UNPACK.EXE ") + name + ".CAB OUT");
    const auto results = dos.Run();
    ExpectFault(results[0], 9, "UNPACK: F cannot be created");
    ExpectFault(results[1], 9, "UNPACK: SUB\\F cannot be created as a folder");
    ExpectFault(results[2], 6, "UNPACK: CON is the name of a device");
}

TEST_F(UnpackOnDos, AFullDiskIsNoticed) {
    DosSession dos;
    ASSERT_EQ(0, RunShell("mformat -C -f 360 -i floppy.img ::").ExitCode);
    WriteBytes("in/1FITS", tools::testing::RandomBytes(200'000));
    WriteBytes("in/2TOO.BIG", tools::testing::RandomBytes(200'000, 2));
    Pack("LZX:21", "X.CAB");
    dos.InsertFloppy("floppy.img");
    ExpectFault(dos.RunOne("UNPACK.EXE X.CAB A:\\"), 8, "UNPACK: 2TOO.BIG does not fit on the disk");
    EXPECT_EQ(0, RunShell("mcopy -n -i floppy.img ::1FITS fits").ExitCode);
    EXPECT_TRUE(ReadBytes("fits") == ReadBytes("in/1FITS"));
    EXPECT_NE(RunShell("mcopy -n -i floppy.img ::2TOO.BIG .").ExitCode, 0) << "no half a file is left";
}

TEST_F(UnpackOnDos, CtrlCStopsIt) {
    DosSession dos;
    WriteBytes("in/LONG", tools::testing::RandomBytes(200'000));
    Pack("MSZIP", "X.CAB");
    ExpectFault(dos.RunOne("UNPACK.EXE X.CAB OUT", 0, Keys::Break), 10, "UNPACK: X.CAB was stopped");
    EXPECT_FALSE(std::filesystem::exists("c/OUT/LONG"));
}

}  // namespace
}  // namespace realmode::unpack::testing
