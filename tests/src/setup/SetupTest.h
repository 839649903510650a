#pragma once
// What the tests of both setup modules share.

#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {

using Lines = std::vector<std::string>;

class SetupTest : public ApplicationTest {
 protected:
    /// Returns the lines of a file without the empty ones, which the system's profile functions may remove
    /// when they write; fails the test for a line that does not end in CR LF.
    Lines LinesOf(const std::string& tail) const {
        Lines lines;
        std::istringstream content(Folder.Read(tail));
        std::string line;
        while (std::getline(content, line)) {
            EXPECT_EQ('\r', line.empty() ? '\0' : line.back()) << tail << ": " << line;
            if (!line.empty()) line.pop_back();
            if (!line.empty()) lines.push_back(line);
        }
        return lines;
    }

    /// Returns the error that `step` raises, if it raises one.
    template <typename Step>
    static std::optional<RuntimeError> ErrorOf(Step step) {
        try {
            step();
        } catch (const RuntimeError& error) {
            return error;
        }
        return std::nullopt;
    }

    /// The message about a cabinet that could not be created.
    static Message PackingFailure(const std::string& name) {
        return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
                "Error While Copying", Buttons::Ok, Icon::Critical};
    }

    /// Puts a stand-in archiver, which creates the cabinet of `name`, next to the program.
    void MakeArchiver(const std::string& name) {
        Folder.MakeTool("cabarc.exe", "create|cabs\\lib\\" + name + ".cab\n");
    }

    /// Expects that the archiver was called only once, for the module `name`.
    void ExpectPacked(const std::string& name) {
        const auto calls = Folder.Calls("cabarc.exe");
        ASSERT_EQ(1u, calls.size());
        EXPECT_EQ(Folder.Path() + "\\cabarc.exe -m LZX:21 -p -r -P files\\" + name + "\\ n cabs\\lib\\" +
                      name + ".cab files\\" + name + "\\*.*",
                  calls[0].CommandLine);
        EXPECT_EQ("hidden", calls[0].Window);
        EXPECT_EQ(Folder.Path(), calls[0].WorkingFolder);
        EXPECT_TRUE(Folder.HasFile("cabs\\lib\\" + name + ".cab"));
    }
};

}  // namespace velbooter::testing
