#include "src/disk/contents/DiskConfiguration.h"

#include <algorithm>
#include <array>

#include "src/common/Text.h"
#include "src/common/TextFiles.h"
#include "src/disk/contents/Cabinets.h"
#include "src/disk/contents/FileCopying.h"

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

Result Copy(const ApplicationPaths& paths, Desktop& desktop, const std::string& source,
            std::string destination, bool quiet) {
    return CopyFileWithPrompt(paths, desktop, source, destination, quiet) ? Result::Success : Result::Failure;
}

Result Create(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard, const std::string& folder,
              const std::string& destination, Result last) {
    const std::string module = LowerCase(folder);
    if (module == "setupwin") {
        wizard.SetupWinIncluded = true;
        return last;
    }
    if (module == "setupnt") {
        wizard.SetupNTIncluded = true;
        return last;
    }
    std::string cabFolder = InCabs(destination);
    return PackCabinet(paths, desktop, folder, InFiles(folder), cabFolder) ? Result::Success
                                                                           : Result::Failure;
}

// Returns the result of the line's operation, or `last` for a line without one.
Result CarryOut(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard, Section section,
                const std::string& left, const std::string& right, Result last) {
    switch (section) {
        case Section::CopyCabs:
            return Copy(paths, desktop, left, InCabs(right), true);
        case Section::CopyFiles:
            return Copy(paths, desktop, left, InCabs(right), false);
        case Section::CopyFilesForCabs:
            return Copy(paths, desktop, left, InFiles(right), false);
        case Section::CreateCabs:
            return Create(paths, desktop, wizard, left, right, last);
        case Section::None:
            break;
    }
    return last;
}

}  // namespace

bool Init_Lists(const ApplicationPaths& paths, Desktop& desktop, FrmWizard& wizard,
                const std::string& diskFile) {
    wizard.SetupWinIncluded = false;
    wizard.SetupNTIncluded = false;
    Section section = Section::None;
    Result last = Result::None;
    LineReader file(paths.PathOf(InFiles(diskFile)));
    while (const auto line = file.Next()) {
        if (line->empty() || line->front() == ';') continue;
        const auto header = std::find_if(kHeaders.begin(), kHeaders.end(),
                                         [&](const Header& known) { return *line == known.Line; });
        if (header != kHeaders.end()) {
            wizard.LblStatus.Caption = header->Status;
            desktop.Repaint();
            section = header->Id;
            continue;
        }
        if (line->front() == '[') section = Section::None;
        const std::vector<std::string> parts = Split(*line, '=');
        if (parts.size() < 2) continue;
        last = CarryOut(paths, desktop, wizard, section, Trim(parts[0]), Trim(parts[1]), last);
        // A line without an operation ends the build, too, as long as no operation has succeeded.
        if (last != Result::Success) return false;
    }
    return true;
}

}  // namespace velbooter
