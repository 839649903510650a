#include "src/disk/DiskConfiguration.h"

#include <algorithm>
#include <array>

#include "src/common/LineReader.h"
#include "src/common/Text.h"
#include "src/disk/Cabinets.h"
#include "src/disk/FileCopying.h"
#include "src/forms/CancelApp.h"

namespace velbooter {

namespace {

enum class Section { None, CopyCabs, CopyFiles, CopyFilesForCabs, CreateCabs };

struct Header {
    const char* Line;
    Section Id;
    const char* Status;
};

constexpr std::array<Header, 4> kHeaders{{
    {"[Copy_CABs]", Section::CopyCabs, "Please Wait ... Copying found ModBoot modules"},
    {"[Copy_Files]", Section::CopyFiles, "Please Wait ... Copying files from sources"},
    {"[Copy_Files_for_CABs]", Section::CopyFilesForCabs, "Please Wait ... Preparing files for CABs creation"},
    {"[Create_CABs]", Section::CreateCabs, "Please Wait ... Creating CAB files"},
}};

enum class Result { None, Success, Failure };

Result Copy(Application& app, const std::string& source, std::string destination, bool quiet) {
    return CopyFileWithPrompt(app, source, destination, quiet) ? Result::Success : Result::Failure;
}

Result Create(Application& app, const std::string& folder, const std::string& destination, Result last) {
    const std::string module = LowerCase(folder);
    if (module == "setupwin") {
        app.SetupWinIncluded = true;
        return last;
    }
    if (module == "setupnt") {
        app.SetupNTIncluded = true;
        return last;
    }
    std::string cabFolder = "cabs\\" + destination;
    return PackCabinet(app, folder, "files\\" + folder, cabFolder) ? Result::Success : Result::Failure;
}

// Returns the result of the line's operation; a line without one passes `last` on.
Result CarryOut(Application& app, Section section, const std::string& left, const std::string& right,
                Result last) {
    switch (section) {
        case Section::CopyCabs:
            return Copy(app, left, "cabs\\" + right, true);
        case Section::CopyFiles:
            return Copy(app, left, "cabs\\" + right, false);
        case Section::CopyFilesForCabs:
            return Copy(app, left, "files\\" + right, false);
        case Section::CreateCabs:
            return Create(app, left, right, last);
        case Section::None:
            break;
    }
    return last;
}

// Returns false when a line cancels the run.
bool CarryOutLines(Application& app, const std::string& diskFile) {
    Section section = Section::None;
    Result last = Result::None;
    LineReader file(app.PathOf("files\\" + diskFile));
    while (const auto line = file.Next()) {
        if (line->empty() || line->front() == ';') continue;
        const auto* header = std::find_if(kHeaders.begin(), kHeaders.end(),
                                          [&](const Header& known) { return *line == known.Line; });
        if (header != kHeaders.end()) {
            app.Wizard.LblStatus.Caption = header->Status;
            app.Screen.Repaint();
            section = header->Id;
            continue;
        }
        if (line->front() == '[') section = Section::None;
        const std::vector<std::string> parts = Split(*line, '=');
        if (parts.size() < 2) continue;
        last = CarryOut(app, section, Trim(parts[0]), Trim(parts[1]), last);
        // A line that does nothing before anything has succeeded ends the build too.
        if (last != Result::Success) return false;
    }
    return true;
}

}  // namespace

void Init_Lists(Application& app, const std::string& diskFile) {
    app.SetupWinIncluded = false;
    app.SetupNTIncluded = false;
    // The file is closed before the working files go, one of which it may be.
    if (!CarryOutLines(app, diskFile)) CancelApp(app);
}

}  // namespace velbooter
