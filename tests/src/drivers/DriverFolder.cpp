#include "tests/src/drivers/DriverFolder.h"

#include <windows.h>

#include <filesystem>

#include "src/common/Files.h"
#include "src/common/INIFile.h"
#include "src/common/Processes.h"
#include "src/common/RuntimeError.h"
#include "src/common/Text.h"
#include "tests/support/BuiltFile.h"

namespace velbooter::testing {

namespace fs = std::filesystem;

namespace {
constexpr int kNoTimeout = -1;
}

WriteProtectedFile::WriteProtectedFile(const std::string& fullPath)
    : handle_(CreateFileA(fullPath.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {
    EXPECT_NE(handle_, INVALID_HANDLE_VALUE) << "cannot protect " << fullPath;
}

WriteProtectedFile::~WriteProtectedFile() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
}

void DriversTest::InstallArchiver() const {
    tools::testing::CopyOver(tools::testing::BuiltFile("demo/cabarc.exe", CABARC_PROGRAM),
                             Folder.At("cabarc.exe"));
}

void DriversTest::MakeCabinet(const std::string& cabinet, const Members& members,
                              std::uint32_t attributes) const {
    InstallArchiver();
    const std::string path = Folder.At("drivers\\" + cabinet);
    fs::create_directories(fs::path(path).parent_path());
    std::string commandLine = Folder.At("cabarc.exe") + " n \"" + path + "\"";
    for (const auto& [name, content] : members) {
        const std::string file = Folder.Write("members\\" + name, content);
        if (attributes != 0) Folder.SetAttributes("members\\" + name, attributes);
        commandLine += " \"" + file + "\"";
    }
    ASSERT_TRUE(RunAndWait(commandLine, kNoTimeout, false, true));
    ASSERT_TRUE(FileExists(path)) << path;
    // A read-only member could not be removed.
    for (const auto& member : members)
        Folder.SetAttributes("members\\" + member.first, FILE_ATTRIBUTE_NORMAL);
    Folder.Remove("members");
}

void DriversTest::MakeDriver(const std::string& cabinet, const std::string& descriptionFile,
                             const std::string& text) const {
    MakeCabinet(cabinet, {{descriptionFile, "0123456789ABC" + text + "\r\n"}});
}

void DriversTest::MakeEmptyCabinets(const std::string& folder,
                                    std::initializer_list<const char*> names) const {
    for (const char* name : names) Folder.Write("drivers\\" + folder + "\\" + name);
}

std::string DriversTest::Key(const std::string& section, const std::string& key) const {
    return TrimAtNul(INIFile(Folder.At("Drivers.ini")).GetINIKey(section, key));
}

std::vector<std::string> DriversTest::Listed() const {
    const ListBox& files = App.Wizard.LstFiles;
    std::vector<std::string> entries;
    for (int i = 0; i < files.ListCount(); ++i) entries.push_back(files.List(i));
    return entries;
}

std::vector<std::string> DriversTest::Selected() const {
    const ListBox& files = App.Wizard.LstFiles;
    std::vector<std::string> entries;
    for (int i = 0; i < files.ListCount(); ++i) {
        if (files.Selected(i)) entries.push_back(files.List(i));
    }
    return entries;
}

int DriversTest::NumberOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number;
    }
    return 0;
}

std::vector<int> DriversTest::PaintedProgress() const {
    std::vector<int> values;
    for (const View& view : Screen.Views) {
        if (values.empty() || values.back() != view.Progress) values.push_back(view.Progress);
    }
    return values;
}

}  // namespace velbooter::testing
