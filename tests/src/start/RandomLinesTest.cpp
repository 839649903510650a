// Whatever a user writes into the text files and the command line, the program raises only its own errors
// and changes only its own working folders. Each test runs a fixed series of texts; with
// VELBOOTER_FUZZ_SECONDS set it continues for that many seconds.

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <map>
#include <random>

#include "src/common/Processes.h"
#include "src/common/RuntimeError.h"
#include "src/disk/contents/DiskConfiguration.h"
#include "src/drivers/DriverIndex.h"
#include "src/drivers/DriverPreparation.h"
#include "src/drivers/DriverStore.h"
#include "src/run/ProgramEnd.h"
#include "src/start/Catalogue.h"
#include "src/start/CommandLine.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

constexpr unsigned kUsualRuns = 60;

// std::mt19937 gives the same numbers everywhere; the distributions of the library do not.
class Random {
 public:
    explicit Random(unsigned seed) : engine_(seed) {}
    unsigned Below(unsigned limit) { return static_cast<unsigned>(engine_()) % limit; }

 private:
    std::mt19937 engine_;
};

/// Answers every question with any of its buttons.
class AnsweringDesktop : public Desktop {
 public:
    explicit AnsweringDesktop(Random& random) : random_(random) {}

    unsigned Questions = 0;

    Answer ShowMessage(const Message& message) override {
        ++Questions;
        switch (message.Choice) {
            case Buttons::Ok:
                return Answer::Ok;
            case Buttons::OkCancel:
                return random_.Below(2) == 0 ? Answer::Ok : Answer::Cancel;
            case Buttons::AbortRetryIgnore:
                break;
        }
        constexpr std::array<Answer, 4> kAnswers{Answer::Abort, Answer::Retry, Answer::Ignore,
                                                 Answer::Ignore};
        return kAnswers[random_.Below(kAnswers.size())];
    }
    std::int32_t ShowFormatDialog() override { return kFormatCanceled; }
    std::optional<std::string> ShowOpenDialog(const CommonDialog&) override { return std::nullopt; }
    std::optional<std::string> ShowSaveDialog(const CommonDialog&) override { return std::nullopt; }
    void CallHelp(std::int32_t, const std::string&, HelpCommand, std::uint32_t) override {}
    bool IsHelpOpen(const std::string&) override { return false; }
    void OpenAddress(const std::string&) override { ADD_FAILURE() << "nothing here opens addresses"; }
    void ShowDriverSelection() override { ADD_FAILURE() << "nothing here selects drivers"; }
    void Repaint() override {}
    void PendingEvents() override {}

 private:
    Random& random_;
};

// Returns a piece of a line. A drive or ".." may lead anywhere that a user wants, so no piece contains one.
std::string Piece(Random& random) {
    static const std::array<std::string, 44> kPieces{"[Copy_CABs]",
                                                     "[Copy_Files]",
                                                     "[Copy_Files_for_CABs]",
                                                     "[Create_CABs]",
                                                     "[DefaultDrivers]",
                                                     "[ASPI]",
                                                     "[NDIS]",
                                                     "[ODI16]",
                                                     "[ODI32]",
                                                     "[Disks_List]",
                                                     "[1]",
                                                     "[",
                                                     "]",
                                                     "=",
                                                     "=",
                                                     "=",
                                                     ";",
                                                     " ",
                                                     "\t",
                                                     "\\",
                                                     "/",
                                                     "*.*",
                                                     "*",
                                                     "?",
                                                     "\"",
                                                     "|",
                                                     "\0"s,
                                                     "\xFF",
                                                     "\x80\xE4",
                                                     "a",
                                                     "b.cab",
                                                     "sub",
                                                     "files\\",
                                                     "modules\\m.cab",
                                                     "loose.txt",
                                                     "mod",
                                                     "setupwin",
                                                     "setupnt",
                                                     "1",
                                                     "-32769",
                                                     "1e9",
                                                     "nul",
                                                     "Count",
                                                     "Name"};
    const unsigned choice = random.Below(static_cast<unsigned>(kPieces.size()) + 2);
    if (choice < kPieces.size()) return kPieces[choice];
    if (choice == kPieces.size()) return std::string(random.Below(600), 'x');
    std::string noise;
    for (unsigned left = random.Below(12); left > 0; --left) {
        const char c = static_cast<char>(random.Below(256));
        if (c != ':' && c != '.') noise += c;
    }
    return noise;
}

std::string Line(Random& random) {
    static const std::array<std::string, 18> kGoodLines{"[Copy_CABs]",
                                                        "[Copy_Files]",
                                                        "[Copy_Files_for_CABs]",
                                                        "[Create_CABs]",
                                                        "[DefaultDrivers]",
                                                        "modules\\m.cab = lib\\",
                                                        "loose.txt=loose.txt",
                                                        "files\\mod\\*.* = sub\\",
                                                        "mod = lib",
                                                        "setupwin=x",
                                                        "[NDIS]",
                                                        "[ASPI]",
                                                        "A=1",
                                                        "B=0",
                                                        "ndis\\a.cab",
                                                        "Count=2",
                                                        "[1]",
                                                        "Name=a"};
    if (random.Below(2) == 0) return kGoodLines[random.Below(static_cast<unsigned>(kGoodLines.size()))];
    std::string line;
    for (unsigned left = random.Below(7); left > 0; --left) line += Piece(random);
    return line;
}

std::string Text(Random& random) {
    constexpr std::array<const char*, 4> kEnds{"\r\n", "\r\n", "\n", "\r"};
    std::string text;
    for (unsigned left = random.Below(25); left > 0; --left) text += Line(random) + kEnds[random.Below(4)];
    if (random.Below(3) == 0) text += Line(random);
    // Two pieces together may form what neither contains.
    for (const char* forbidden : {"..", ":"}) {
        for (size_t at = text.find(forbidden); at != std::string::npos; at = text.find(forbidden))
            text.erase(at, 1);
    }
    return text;
}

/// An application folder next to a file that the program must not touch.
struct Machine {
    explicit Machine(unsigned seed) : Chance(seed), Screen(Chance) {
        for (const char* name : {"dos\\a", "loose.txt", "modules\\m.cab", "files\\mod\\one.txt",
                                 "files\\mod\\deep\\two.txt", "drivers\\ndis\\a.cab", "drivers\\aspi\\b.cab"})
            Folder.Write("app\\"s + name, name);
        Folder.Write("beside.txt", "beside");
        App.Wizard.ChkASPI.Value = 1;
        App.Wizard.ChkNDIS.Value = 1;
        SetNetworkMode(App.Wizard, NetworkMode::Ndis);
    }

    /// Everything that the program must not write: all files except its working folders and Drivers.ini.
    std::map<std::string, std::string> Untouchable() const {
        std::map<std::string, std::string> contents;
        for (const std::string& file : Folder.Tree("")) {
            const bool isWork = file.starts_with("app\\cabs\\") || file.starts_with("app\\files\\") ||
                                file.starts_with("app\\Temp\\") || file == "app\\Drivers.ini";
            if (!isWork) contents[file] = Folder.Read(file);
        }
        return contents;
    }

    Random Chance;
    ApplicationFolder Folder;
    AnsweringDesktop Screen;
    Application App{Folder.At("app"), Screen};
};

/// Runs `step` with one text after another, each in a new application folder; most texts begin with
/// `opening`, without which many end at their first line. The program's own kinds of errors are expected.
template <typename Step>
void RunSeries(const std::string& opening, const Step& step) {
    const char* const seconds = std::getenv("VELBOOTER_FUZZ_SECONDS");
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(seconds == nullptr ? 0 : std::atoi(seconds));
    unsigned refusals = 0;
    unsigned questions = 0;
    unsigned seed = 0;
    for (; seed < kUsualRuns || Clock::now() < end; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Machine machine(seed);
        const std::string text = (machine.Chance.Below(3) == 0 ? "" : opening) + Text(machine.Chance);
        const auto before = machine.Untouchable();
        try {
            step(machine, text);
        } catch (const RuntimeError& error) {
            EXPECT_NE("Application-defined error", error.Text) << error.Number;
            ++refusals;
        } catch (const ProgramEnd& end) {
            EXPECT_EQ(ExitCode::Refused, end.Code);
            ++refusals;
        } catch (const std::exception& error) {
            FAIL() << error.what() << " from:\n" << text;
        }
        ASSERT_EQ(before, machine.Untouchable()) << "after:\n" << text;
        questions += machine.Screen.Questions;
    }
    std::printf("%u texts, %u refused, %u questions\n", seed, refusals, questions);
}

TEST(RandomLines, OfADiskConfigurationAreCarriedOutOrRefused) {
    RunSeries("[Copy_CABs]\r\nmodules\\m.cab=lib\r\n[Copy_Files]\r\n", [](Machine& machine,
                                                                          const std::string& text) {
        machine.Folder.Write("app\\files\\any.ini", text);
        static_cast<void>(Init_Lists(machine.App.Paths, machine.App.Screen, machine.App.Wizard, "any.ini"));
    });
}

TEST(RandomLines, OfADiskConfigurationGiveDefaultDrivers) {
    RunSeries("[DefaultDrivers]\r\nndis\\a.cab\r\n", [](Machine& machine, const std::string& text) {
        machine.Folder.Write("app\\Drivers.ini", "[NDIS]\r\nA=1\r\n[ASPI]\r\nB=1\r\n");
        machine.Folder.Write("app\\files\\any.ini", text);
        for (const DriverGroup& group : kDriverGroups)
            GetDefaultDriversOptions(machine.App.Paths, machine.App.Screen, "any.ini", group.Section);
    });
}

TEST(RandomLines, OfTheDriverSelectionPutDriversOnTheDisk) {
    RunSeries("[NDIS]\r\nA=1\r\n", [](Machine& machine, const std::string& text) {
        machine.Folder.Write("app\\Drivers.ini", text);
        static_cast<void>(PrepareDrivers(machine.App.Paths, machine.App.Screen, machine.App.Wizard));
        EXPECT_LE(machine.App.Wizard.WorkProgress.Value, machine.App.Wizard.WorkProgress.Max);
    });
}

TEST(RandomLines, OfTheCatalogueGiveAListWithTheCustomRow) {
    RunSeries("[Disks_List]\r\nCount=1", [](Machine& machine, const std::string& text) {
        machine.Folder.Write("app\\files\\disklist.ini", text);
        Fill_DiskList(machine.App);
        const auto& rows = machine.App.Wizard.LV_Disk.ListItems;
        ASSERT_FALSE(rows.empty());
        EXPECT_TRUE(rows[0].Selected);
        EXPECT_EQ("custom", rows[0].SubItem);
    });
}

TEST(RandomLines, AreParsedAsACommandLineOrRefused) {
    RunSeries("velbooter.exe ", [](Machine& machine, const std::string& text) {
        static const std::array<std::string, 12> kWords{"-t", "144",     "288",  "-o", "-k", "-d",
                                                        "-p", "-plugin", "/sel", "-i", "\"", "mydisk"};
        std::string line = ArgumentsOf(text);
        for (unsigned left = machine.Chance.Below(8); left > 0; --left) {
            line += kWords[machine.Chance.Below(kWords.size())];
            line += machine.Chance.Below(4) == 0 ? Piece(machine.Chance) : " ";
        }
        const CommandLineValues values = ParseCommandLine(machine.App.Paths, machine.App.Screen, line);
        EXPECT_FALSE(values.DiskName.empty());
        EXPECT_GE(values.ImageType, 0);
        EXPECT_LE(values.ImageType, 2);
        EXPECT_EQ(std::string::npos, values.DiskName.find(' '));
    });
}

}  // namespace
}  // namespace velbooter::testing
