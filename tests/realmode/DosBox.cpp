#include "tests/realmode/DosBox.h"

#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/RunProgram.h"

namespace realmode::testing {

void RunInDosBox(const std::filesystem::path& folder, const std::vector<std::string>& commands,
                 const std::string& settings, int seconds) {
    std::filesystem::create_directories(folder / "c");
    std::filesystem::create_directories(folder / "home");
    const std::filesystem::path configuration = folder / "dosbox.conf";
    std::ofstream(configuration) << "[sdl]\noutput=surface\n[mixer]\nnosound=true\n[midi]\nmididevice=none\n"
                                 << settings;
    // The first words keep DOSBox from using the screen, the loudspeaker and the user's own settings.
    std::vector<std::string> words{"env",
                                   "SDL_VIDEODRIVER=dummy",
                                   "SDL_AUDIODRIVER=dummy",
                                   "HOME=" + std::filesystem::absolute(folder / "home").string(),
                                   "timeout",
                                   std::to_string(seconds),
                                   "dosbox",
                                   "-conf",
                                   configuration.string(),
                                   "-noconsole",
                                   "-c",
                                   "mount c \"" + (folder / "c").string() + "\"",
                                   "-c",
                                   "c:"};
    for (const std::string& command : commands) words.insert(words.end(), {"-c", command});
    words.insert(words.end(), {"-c", "exit"});
    const tools::testing::ProgramResult result = tools::testing::RunProgram(words);
    EXPECT_EQ(0, result.ExitCode) << result.All();
}

}  // namespace realmode::testing
