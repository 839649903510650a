#include "tests/realmode/DosBox.h"

#include <gtest/gtest.h>

#include "tests/support/RunProgram.h"

namespace realmode::testing {

void RunInDosBox(const tools::testing::TestFolder& files, const std::vector<std::string>& commands) {
    files.MakeFolder("c");
    files.MakeFolder("home");
    files.Write("dosbox.conf", "[dos]\nums=true\n[mixer]\nnosound=true\n");
    // The first words keep DOSBox from using the screen, the loudspeaker and the user's own settings.
    std::vector<std::string> words{"env",
                                   "SDL_VIDEODRIVER=dummy",
                                   "SDL_AUDIODRIVER=dummy",
                                   "HOME=" + files.Text("home"),
                                   "timeout",
                                   "60",
                                   "dosbox",
                                   "-conf",
                                   files.Text("dosbox.conf"),
                                   "-noconsole",
                                   "-c",
                                   "mount c \"" + files.Text("c") + "\"",
                                   "-c",
                                   "c:"};
    for (const std::string& command : commands) words.insert(words.end(), {"-c", command});
    words.insert(words.end(), {"-c", "exit"});
    const tools::testing::ProgramResult result = tools::testing::RunProgram(words);
    EXPECT_EQ(result.ExitCode, 0) << result.Output;
}

}  // namespace realmode::testing
