#include "src/start/CommandLine.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <vector>

#include "src/common/Folders.h"
#include "src/common/Text.h"
#include "src/forms/ProductTexts.h"
#include "src/run/ProgramEnd.h"

namespace velbooter {

namespace {

constexpr const char* kErrorTitle = "Command Line options Error";

// Returns false for a name that stands for the folder plugins itself or leads out of it.
bool IsPluginName(const std::string& name) {
    if (name.find(':') != std::string::npos) return false;
    if (!name.empty() && name.find_first_not_of("\\/") == std::string::npos) return false;
    for (const std::string& part : Split(name, '\\')) {
        const std::vector<std::string> names = Split(part, '/');
        const bool leadsAway = std::any_of(names.begin(), names.end(), [](const std::string& step) {
            return !step.empty() && step.find_first_not_of('.') == std::string::npos;
        });
        if (leadsAway) return false;
    }
    return true;
}

bool LooksLikeOption(const std::string& token) {
    return !token.empty() && (token.front() == '-' || token.front() == '/');
}

// Walks the tokens of one command line and collects the values.
class Parser {
 public:
    Parser(const ApplicationPaths& paths, Desktop& desktop, const std::string& commandLine)
        : paths_(paths), desktop_(desktop), commandLine_(commandLine), tokens_(Split(commandLine, ' ')) {}

    CommandLineValues Run() {
        for (; index_ < tokens_.size() && !targetTaken_; ++index_) TakeToken();
        return values_;
    }

 private:
    using Words = std::initializer_list<const char*>;

    const std::string& Token() const { return tokens_[index_]; }
    bool IsLast() const { return index_ + 1 == tokens_.size(); }

    bool Is(Words words) const {
        const std::string lower = LowerCase(Token());
        return std::any_of(words.begin(), words.end(), [&](const char* word) { return lower == word; });
    }

    void Show(const std::string& text, const char* title = kErrorTitle) {
        desktop_.ShowMessage({text, title});
    }

    void ShowError(const std::string& text, const char* title = kErrorTitle) {
        Show(text, title);
        values_.ParameterError = true;
    }

    void TakeToken() {
        if (Is({"-o", "/o", "-os", "/os"})) {
            TakeOperatingSystem();
        } else if (Is({"-k", "/k", "-keyfile", "/keyfile"})) {
            values_.UseKeyFile = true;
        } else if (Is({"-d", "/d"})) {
            values_.DriversFlag = true;
        } else if (Is({"-p", "/p", "-plugin", "/plugin"})) {
            TakePlugin();
        } else if (Is({"-sel", "/sel"})) {
            values_.ShowDriverDialog = true;
        } else if (Is({"-i", "/i"})) {
            // Accepted, so that command lines that carry it are not rejected.
        } else if (Is({"-t", "/t"})) {
            TakeImageType();
        } else if (LooksLikeOption(Token())) {
            ShowError("Invalid Argument : " + Token() + "\r\n\r\n" + UsageText());
        } else if (values_.DiskName.empty()) {
            values_.DiskName = Token();
        } else {
            TakeTarget();
        }
    }

    // The value is accepted and ignored; its errors do not count as parameter errors.
    void TakeOperatingSystem() {
        if (IsLast()) {
            Show("OS not specified");
        } else {
            ++index_;
        }
        if (LooksLikeOption(Token())) Show("Invalid OS", kProgramTitle);
    }

    void TakePlugin() {
        const bool missing = IsLast();
        if (!missing) ++index_;
        if (missing || LooksLikeOption(Token())) {
            ShowError("Plugin not specified");
        } else if (!IsPluginName(Token()) || !FolderExists(paths_.PathOf(InPlugins(Token())))) {
            ShowError("The Plugin specified was not found in the PlugIns folder.", "Invalid Plugin Name");
        } else {
            values_.PluginName = Token();
        }
    }

    // Without a value the index stays on the option itself, which is then rejected as a value: two messages.
    void TakeImageType() {
        if (IsLast()) {
            ShowError("Image type not specified");
        } else {
            ++index_;
        }
        if (LooksLikeOption(Token())) {
            ShowError("Invalid Image type");
        } else if (Token() == "144") {
            values_.ImageType = 1;
        } else if (Token() == "288") {
            values_.ImageType = 2;
        } else {
            ShowError("Invalid Image type: " + Token());
        }
    }

    // The target is the rest of the line after the first occurrence of the disk name, wherever that is,
    // spaces included: a name that also stands earlier in the line shifts the cut.
    void TakeTarget() {
        const size_t begin = commandLine_.find(values_.DiskName) + values_.DiskName.size() + 1;
        if (begin <= commandLine_.size()) values_.TargetPath = Trim(commandLine_.substr(begin));
        targetTaken_ = true;
    }

    const ApplicationPaths& paths_;
    Desktop& desktop_;
    std::string commandLine_;
    std::vector<std::string> tokens_;
    size_t index_ = 0;
    bool targetTaken_ = false;
    CommandLineValues values_;
};

}  // namespace

std::string UsageText() {
    return "Usage: velbooter [-t type] [-plugin name] [-sel] [-keyfile] name [target]\r\n"
           "\r\n"
           "name : is the name of the disk or image to build, see files\\disklist.ini for details.\r\n"
           "target : target drive or file, if it is not a full path it will be saved relevant to Velbooter "
           "current folder.\r\n"
           "-t type : Specify image type (144 or 288).\r\n"
           "-plugin name : Add a plugin to the created image (see the PlugIns folder).\r\n"
           "-sel : Show the Select Drivers window before creating the floppy image.\r\n"
           "-keyfile : Load the Windows 9x product key from the keyfile.txt file instead of the Windows "
           "Registry.\r\n";
}

CommandLineValues ParseCommandLine(const ApplicationPaths& paths, Desktop& desktop,
                                   const std::string& commandLine) {
    CommandLineValues values = Parser(paths, desktop, commandLine).Run();
    if (values.DiskName.empty()) {
        desktop.ShowMessage({"The disk name is not specified", kErrorTitle});
        throw ProgramEnd{ExitCode::Refused};
    }
    return values;
}

}  // namespace velbooter
