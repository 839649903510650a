#pragma once
// The fixture of the batch mode's tests: a catalogue, for each disk a configuration file that puts one file
// "mark\<disk>" onto it, the DOS system files, and an image tool that lists its input in tree.txt.

#include <string>
#include <utility>
#include <vector>

#include "src/common/Text.h"
#include "src/run/ProgramEnd.h"
#include "src/start/Automator.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {

class BatchModeTest : public ApplicationTest {
 protected:
    /// A disk of the catalogue: its name and the further lines of its section.
    using Disks = std::vector<std::pair<std::string, std::string>>;

    /// The files that every disk has, listed before the disk's own mark.
    static constexpr const char* kSystemFiles = "COMMAND.COM 11\nIO.SYS 6\nMSDOS.SYS 9\n";

    BatchModeTest() {
        for (const char* name : {"IO.SYS", "MSDOS.SYS", "COMMAND.COM"}) {
            Folder.Write(std::string("files\\base_files\\") + name, name);
        }
        Folder.MakeTool("bfi.exe", "tree|tree.txt\nimage\n");
    }

    /// Writes the catalogue of `disks` and their configuration files, that of the custom disk included.
    void MakeDisks(const Disks& disks) {
        std::string catalogue = "[Disks_List]\r\nCount=" + std::to_string(disks.size()) + "\r\n";
        for (size_t i = 0; i < disks.size(); ++i) {
            catalogue +=
                "[" + std::to_string(i + 1) + "]\r\nName=" + disks[i].first + "\r\n" + disks[i].second;
            Configure(disks[i].first);
        }
        Folder.Write("files\\disklist.ini", catalogue);
        Configure("custom");
    }

    /// Writes the configuration file of `disk`: its mark, and then `more`.
    void Configure(const std::string& disk, const std::string& more = "") {
        const std::string name = LowerCase(disk);
        Folder.Write("files\\marks\\" + name, name);
        Folder.Write("files\\" + name + ".ini",
                     "[Copy_Files]\r\nfiles\\marks\\" + name + "=mark\\" + name + "\r\n" + more);
    }

    ExitCode Run(const CommandLineValues& values) {
        try {
            RunBatch(App, values);
        } catch (const ProgramEnd& end) {
            return end.Code;
        }
        return ExitCode::InternalError;
    }

    static CommandLineValues Values(const std::string& disk, const std::string& target = "") {
        CommandLineValues values;
        values.DiskName = disk;
        values.TargetPath = target;
        return values;
    }

    /// Returns the text between `before` and `after` in the image tool's command line.
    std::string InCommandLine(const std::string& before, const std::string& after) {
        const auto calls = Folder.Calls("bfi.exe");
        if (calls.size() != 1) return "calls: " + std::to_string(calls.size());
        const std::string& line = calls[0].CommandLine;
        const size_t from = line.find(before) + before.size();
        return line.substr(from, line.find(after, from) - from);
    }
    std::string Image() { return InCommandLine("-f=\"", "\""); }
    std::string Type() { return InCommandLine("-t=", " "); }

    /// Returns whether the image tool was given `file`, a path relative to the disk's root.
    bool IsOnDisk(const std::string& file) {
        return ("\n" + Folder.Read("tree.txt")).find("\n" + file + " ") != std::string::npos;
    }

    void ExpectCleanFolder() {
        EXPECT_FALSE(Folder.HasFile("Drivers.ini"));
        EXPECT_FALSE(Folder.HasFolder("cabs"));
        EXPECT_FALSE(Folder.HasFolder("Temp"));
    }

    /// A folder of the test outside the application folder, for targets with a drive.
    const ApplicationFolder Elsewhere;
};

}  // namespace velbooter::testing
