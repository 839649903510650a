#include "tests/e2e/support/Expectations.h"

#include <gtest/gtest.h>

namespace velbooter::e2e {

ShownMessage OptionError(const std::string& text, const std::string& title) {
    return {text, title, {"OK"}, Picture::None};
}

ShownMessage CopyQuestion(const std::string& source) {
    return {"Error while copying the file :\r\n" + source,
            "Error While Copying",
            {"Abort", "Retry", "Ignore"},
            Picture::Critical};
}

std::string Usage() {
    return "Usage: velbooter [-t type] [-plugin name] [-sel] [-keyfile] name [target]\r\n\r\n"
           "name : is the name of the disk or image to build, see files\\disklist.ini for details.\r\n"
           "target : target drive or file, if it is not a full path it will be saved relevant to Velbooter "
           "current "
           "folder.\r\n"
           "-t type : Specify image type (144 or 288).\r\n"
           "-plugin name : Add a plugin to the created image (see the PlugIns folder).\r\n"
           "-sel : Show the Select Drivers window before creating the floppy image.\r\n"
           "-keyfile : Load the Windows 9x product key from the keyfile.txt file instead of the Windows "
           "Registry.\r\n";
}

void ExpectNoWorkingFiles(const DemoFolder& folder) {
    EXPECT_FALSE(folder.Exists("Drivers.ini"));
    EXPECT_FALSE(folder.Exists("cabs"));
    EXPECT_FALSE(folder.Exists("Temp"));
}

FloppyImage ExpectImage(const DemoFolder& folder, const std::string& path, size_t bytes) {
    FloppyImage image(path);
    EXPECT_EQ(bytes, image.Size());
    EXPECT_EQ("VELSTART", image.Label());
    const auto contents = [&](const std::string& name) {
        const auto found = image.Files().find(name);
        return found == image.Files().end() ? "not in the image" : found->second;
    };
    EXPECT_EQ(folder.Read("dos\\IO.SYS"), contents("IO.SYS"));
    EXPECT_EQ(folder.Read("dos\\COMMAND.COM"), contents("COMMAND.COM"));
    EXPECT_EQ(folder.Read("files\\base_files\\MSDOS.SYS"), contents("MSDOS.SYS"));
    return image;
}

}  // namespace velbooter::e2e
