#pragma once
// What the tests of the drivers share: an application folder with the real archiver, in which they create
// driver cabinets, and the keys of Drivers.ini.

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {

/// Allows others to read a file but not to write it, as long as it lives. The read-only attribute would not
/// do: where the tests run with all rights, it keeps nobody from writing.
class WriteProtectedFile {
 public:
    explicit WriteProtectedFile(const std::string& fullPath);
    WriteProtectedFile(const WriteProtectedFile&) = delete;
    WriteProtectedFile& operator=(const WriteProtectedFile&) = delete;
    ~WriteProtectedFile();

 private:
    void* handle_;
};

class DriversTest : public ApplicationTest {
 protected:
    /// The list of files is empty and lacks its first entry: every build fills it before the drivers are
    /// added.
    DriversTest() { App.Wizard.LstFiles.Clear(); }

    /// The names of a cabinet's members and their contents.
    using Members = std::vector<std::pair<std::string, std::string>>;

    /// Puts the real archiver into the application folder.
    void InstallArchiver() const;

    /// Creates drivers\`cabinet` ("ndis\\E100B.CAB") from `members` with the archiver, which is installed
    /// for it. The members have the attributes `attributes`.
    void MakeCabinet(const std::string& cabinet, const Members& members, std::uint32_t attributes = 0) const;

    /// Creates drivers\`cabinet` with one member, `descriptionFile`, which describes the driver as `text`
    /// after the field of 13 characters.
    void MakeDriver(const std::string& cabinet, const std::string& descriptionFile,
                    const std::string& text) const;

    /// Creates the files `names` in drivers\`folder`. They are empty: nothing can be extracted from them.
    void MakeEmptyCabinets(const std::string& folder, std::initializer_list<const char*> names) const;

    /// Returns the value of a key in Drivers.ini; "" when there is none.
    std::string Key(const std::string& section, const std::string& key) const;

    /// Return the entries of LstFiles, all of them and the selected ones, in their order.
    std::vector<std::string> Listed() const;
    std::vector<std::string> Selected() const;

    /// Returns the number of the RuntimeError that `action` raises; 0 when it raises none.
    static int NumberOf(const std::function<void()>& action);

    /// Returns the values of the progress bar as they were painted, without repetitions.
    std::vector<int> PaintedProgress() const;
};

}  // namespace velbooter::testing
