#pragma once
// What the tests on a real drive A:, which with-drive-a.sh creates for them, have in common.

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "src/common/Drives.h"
#include "src/common/Files.h"
#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"
#include "tests/support/DriveAControl.h"

namespace velbooter::testing {

class DriveATest : public ApplicationTest {
 protected:
    DriveATest() {
        std::error_code noDrive;
        std::vector<std::filesystem::path> old;
        for (const auto& entry : std::filesystem::directory_iterator("A:\\", noDrive))
            old.push_back(entry.path());
        for (const auto& path : old) std::filesystem::remove_all(path);
    }

    /// Adds a selected entry with a file of `size` bytes.
    void Add(const std::string& entry, size_t size) {
        Folder.Write("cabs\\" + entry, std::string(size, 'x'));
        App.Wizard.LstFiles.AddItem(entry);
        App.Wizard.LstFiles.Select(App.Wizard.LstFiles.ListCount() - 1, true);
    }

    /// Returns the size of a file on the drive in bytes; -1 when it does not exist.
    static std::int32_t SizeOnDrive(const std::string& entry) { return GetFileSize("A:\\" + entry); }

    static std::string DescriptionOf(int number) {
        return "The current Error has happend :\r\n" + RuntimeErrorText(number);
    }
    static Message NotEnoughSpace(const std::string& entry) {
        return {"The Image file doesn't have enough free space for the file \r\n" + entry +
                    "\r\nThe file will not be copied to the floppy image.",
                "Not Enough Free Space", Buttons::Ok, Icon::Exclamation};
    }
    static Message DiskFull() {
        return {DescriptionOf(kDiskFull), "Error while Copying to Floppy", Buttons::AbortRetryIgnore,
                Icon::Critical};
    }
};

}  // namespace velbooter::testing
