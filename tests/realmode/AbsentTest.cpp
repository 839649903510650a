#include <gtest/gtest.h>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/DosBox.h"
#include "tests/realmode/DriverRun.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;

constexpr std::size_t kHeaderBytes = 32;

class Absent : public ::testing::Test {
 protected:
    Outcome Loaded(const std::string& line, const std::vector<Bytes>& requests) const {
        const Bytes program = FileAt(ABSENT);
        Bytes script;
        for (const Bytes& request : requests) {
            script.push_back(1);
            script.insert(script.end(), request.begin(), request.end());
        }
        return RunDriver(Files, Bytes(program.begin() + kHeaderBytes, program.end()), {.Line = line}, script);
    }

    std::string Text(const std::string& name) const {
        const Bytes text = Files.Read(name);
        return {text.begin(), text.end()};
    }

    const tools::testing::TestFolder Files;
};

TEST_F(Absent, SaysUnderWhichNameItWasStartedAndEndsWithTheCodeOfNoAnswer) {
    Files.Write("c/BIN/SYS.COM", FileAt(ABSENT));
    Files.Write("c/PARENT.COM", FileAt(ABSENT_PARENT));
    RunInDosBox(Files.Path(), {"parent >out.txt", "if errorlevel 255 echo 255 >>out.txt"});
    EXPECT_EQ("SYS.COM is not part of the DOS that this disk was built with.\r\n255\r\n", Text("c/OUT.TXT"));
}

TEST_F(Absent, WritesNothingToTheStandardOutput) {
    Files.Write("c/SMARTDRV.EXE", FileAt(ABSENT));
    RunInDosBox(Files.Path(), {"smartdrv >out.txt", "echo done >>out.txt"});
    EXPECT_EQ("done\r\n", Text("c/OUT.TXT"));
}

TEST_F(Absent, AsADriverSaysSoAndStaysOut) {
    for (const std::string line : {"A:\\EMM386.EXE NOEMS\r\n", "\\EMM386.EXE\r\n", "EMM386.EXE\tNOEMS\r\n"}) {
        const Outcome outcome = Loaded(line, {InitRequest()});
        EXPECT_EQ("EMM386.EXE is not part of the DOS that this disk was built with.\r\n", outcome.Printed);
        EXPECT_EQ(kDone, outcome.Status(0));
        EXPECT_EQ(0, outcome.Requests[0][0x0D]) << "units";
        EXPECT_EQ(0U, outcome.Word(0, 0x0E)) << "nothing stays";
        EXPECT_EQ(kDriverSegment, outcome.Word(0, 0x10));
    }
}

TEST_F(Absent, AsADriverKnowsNoOtherCommand) {
    const Outcome outcome = Loaded("\\HIMEM.SYS\r\n", {DriverRequest(1, 0x13), DriverRequest(4, 0x16)});
    EXPECT_EQ("", outcome.Printed);
    for (std::size_t request : {0, 1}) EXPECT_EQ(kUnknownCommand, outcome.Status(request)) << request;
}

}  // namespace
}  // namespace realmode::testing
