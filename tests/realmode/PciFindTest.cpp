#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/DosBox.h"
#include "tests/realmode/ProgramRun.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;
using Words = std::vector<std::string>;

constexpr int kFound = 0;
constexpr int kNotInMap = 1;
constexpr int kNoBus = 2;
constexpr int kNoMap = 3;
constexpr int kUsage = 4;

/// A map as the program writes it from the lists of four drivers.
constexpr char kMap[] =
    "; PCI map file (build from ndis.pci files)\r\n"
    "8086 1229 E100B ; Intel PRO/100 (82557, 82558, 82559)\r\n"
    "8086 100E E1000 ; Intel PRO/1000 MT (82540EM)\r\n"
    "1022 2000 PCNTND ; AMD PCnet-PCI\r\n"
    "10EC 8029 RTL8029 ; Realtek RTL8029(AS)\r\n"
    "10EC 8139 RTL8139 ; Realtek RTL8139\r\n";

/// QEMU's cards by its names for them, in their order on the bus.
Words Cards(const Words& names) {
    Words words;
    for (const std::string& name : names) words.insert(words.end(), {"-device", name + ",romfile="});
    return words;
}

class PciFind : public ::testing::Test {
 protected:
    ProgramOutcome Run(const Words& cards, const std::string& map,
                       const std::string& tail = " A:\\ETC\\_MSNET.PCI") const {
        return RunProgramOfDos(Files, {.Program = PCIFIND,
                                       .Tail = tail,
                                       .File = Bytes(map.begin(), map.end()),
                                       .Machine = Cards(cards)});
    }

    void ExpectDriver(const Words& cards, const std::string& map, const std::string& driver) const {
        const ProgramOutcome outcome = Run(cards, map);
        EXPECT_EQ(kFound, outcome.ExitCode) << map;
        EXPECT_EQ(driver + "\r\n", outcome.Output) << map;
        EXPECT_EQ("", outcome.Errors) << map;
    }

    void ExpectComplaint(const ProgramOutcome& outcome, int code, const std::string& line) const {
        EXPECT_EQ(code, outcome.ExitCode);
        EXPECT_EQ("", outcome.Output);
        EXPECT_EQ(line + "\r\n", outcome.Errors);
    }

    const tools::testing::TestFolder Files;
};

TEST_F(PciFind, NamesTheDriverOfEachCard) {
    const std::vector<std::pair<std::string, std::string>> cards{
        {"rtl8139", "RTL8139"}, {"pcnet", "PCNTND"}, {"ne2k_pci", "RTL8029"}, {"e1000", "E1000"}};
    for (const auto& [card, driver] : cards) ExpectDriver({card}, kMap, driver);
}

TEST_F(PciFind, WritesTheLineOfABatchFileWhenAsked) {
    for (const std::string tail :
         {" A:\\ETC\\_MSNET.PCI /S", " /s\tA:\\ETC\\_MSNET.PCI ", " A:\\ETC\\_MSNET.PCI/S"}) {
        const ProgramOutcome outcome = Run({"rtl8139"}, kMap, tail);
        EXPECT_EQ(kFound, outcome.ExitCode) << tail;
        EXPECT_EQ("SET NIC=RTL8139\r\n", outcome.Output) << tail;
        EXPECT_EQ("A:\\ETC\\_MSNET.PCI", outcome.Opened) << tail;
    }
}

TEST_F(PciFind, TakesTheFirstCardThatTheMapKnows) {
    ExpectDriver({"pcnet", "rtl8139"}, kMap, "PCNTND");
    ExpectDriver({"rtl8139", "pcnet"}, kMap, "RTL8139");
    ExpectDriver({"vmxnet3", "pcnet"}, kMap, "PCNTND");
}

TEST_F(PciFind, FindsACardBehindABridge) {
    const ProgramOutcome outcome =
        RunProgramOfDos(Files, {.Program = PCIFIND,
                                .Tail = " X",
                                .File = Bytes(std::begin(kMap), std::end(kMap) - 1),
                                .Machine = {"-device", "pci-bridge,id=behind,chassis_nr=1", "-device",
                                            "ne2k_pci,bus=behind,addr=3,romfile="}});
    EXPECT_EQ("RTL8029\r\n", outcome.Output);
}

TEST_F(PciFind, FindsACardThatIsOneOfSeveralInADevice) {
    const std::string map = "10EC 8139 RTL8139\r\n";
    ExpectDriver({"vmxnet3,addr=9.0,multifunction=on", "rtl8139,addr=9.3"}, map, "RTL8139");
}

TEST_F(PciFind, ReadsALongMapWhoseLinesComeInAnyForm) {
    std::string lines;
    for (int i = 0; i < 400; ++i)
        lines += "8086 F" + std::to_string(100 + i) + " OTHER" + std::to_string(i) + "\r\n";
    ExpectDriver({"rtl8139"}, lines + "10ec 8139 Rtl8139\r\n", "Rtl8139");
    ExpectDriver({"rtl8139"}, lines + "  10EC\t8139\tA_~!#$&@; x\r\n", "A_~!#$&@");
    ExpectDriver({"rtl8139"}, "10EC 8139 LAST", "LAST");
    ExpectDriver({"rtl8139"}, "\n10EC 8139 UNIX-1\n10EC 8139 SECOND\n", "UNIX-1");
    ExpectDriver({"rtl8139"}, std::string(500, 'x') + "\r\n10EC 8139 B " + std::string(500, 'y') + "\r\n",
                 "B");
}

TEST_F(PciFind, PassesOverLinesThatAreNone) {
    const Words none{"10EC 8139\r\n",
                     "10EC 8139 \r\n",
                     "10EC 8139 ; RTL\r\n",
                     "10EC 813 RTL\r\n",
                     "10EC 81391 RTL\r\n",
                     "10EC8139 RTL\r\n",
                     "10EG 8139 RTL\r\n",
                     ";10EC 8139 RTL\r\n",
                     "10EC 8139 NINELONGS\r\n",
                     "10EC 8139 A>B\r\n",
                     "10EC 8139 A%B\r\n",
                     "10EC 8139 A|B\r\n",
                     "8139 10EC RTL\r\n",
                     "\x1A"
                     "10EC 8139 RTL\r\n"};
    for (const std::string& line : none) {
        SCOPED_TRACE(line);
        ExpectComplaint(Run({"rtl8139"}, line), kNotInMap,
                        "PCIFIND: the map has no driver for the network card 10EC 8139");
    }
}

TEST_F(PciFind, SaysThatThereIsNoNetworkCard) {
    ExpectComplaint(Run({}, kMap), kNotInMap, "PCIFIND: this PC has no network card on a PCI bus");
}

TEST_F(PciFind, SaysThatThereIsNoPciBus) {
    const ProgramOutcome outcome = RunProgramOfDos(
        Files,
        {.Program = PCIFIND, .Tail = " X", .File = Bytes{}, .Machine = {"-M", "isapc", "-cpu", "486"}});
    ExpectComplaint(outcome, kNoBus, "PCIFIND: this PC has no PCI bus");
}

TEST_F(PciFind, SaysThatThereIsNoPciBusInDosBox) {
    Files.Write("c/PCIFIND.COM", FileAt(PCIFIND));
    RunInDosBox(Files.Path(), {"pcifind x >out.txt", "if errorlevel 2 echo two >>out.txt",
                               "if errorlevel 3 echo three >>out.txt"});
    const Bytes out = Files.Read("c/OUT.TXT");
    EXPECT_EQ("two\r\n", std::string(out.begin(), out.end()));
}

TEST_F(PciFind, SaysThatTheMapCannotBeRead) {
    const std::string line = "PCIFIND: the map cannot be read";
    ExpectComplaint(RunProgramOfDos(Files, {.Program = PCIFIND, .Tail = " A:\\X.PCI"}), kNoMap, line);
    std::string lines;
    for (int i = 0; i < 400; ++i) lines += "8086 1229 E100B ; Intel\r\n";
    ExpectComplaint(RunProgramOfDos(Files, {.Program = PCIFIND,
                                            .Tail = " X",
                                            .File = Bytes(lines.begin(), lines.end()),
                                            .ReadsFailAt = 4096}),
                    kNoMap, line);
}

TEST_F(PciFind, OtherArgumentsAreALine) {
    for (const std::string tail : {"", "  ", " /S", " A B", " X /T", " X /"}) {
        SCOPED_TRACE(tail);
        ExpectComplaint(Run({"rtl8139"}, kMap, tail), kUsage,
                        "PCIFIND MAP [/S]: prints the driver that the map has for a card of this PC");
    }
}

}  // namespace
}  // namespace realmode::testing
