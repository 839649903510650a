#include "tools/cabarc/CommandLine.h"

#include <optional>

#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

constexpr std::string_view kUsage =
    "usage: cabarc [options] n CABINET FILE...      pack files into a new cabinet\n"
    "       cabarc [options] x CABINET [NAME...] [FOLDER\\]\n"
    "                                               extract members, into FOLDER if given\n"
    "       cabarc [options] l CABINET [NAME...]    list members\n"
    "FILE and NAME may hold the wildcards * and ?; *.* is every name.\n"
    "options:\n"
    "  -m METHOD  NONE, MSZIP (if not given) or LZX:15 to LZX:21\n"
    "  -p         store the path of a file, not only its name\n"
    "  -P PREFIX  leave PREFIX out of the stored paths; may be repeated\n"
    "  -r         look for FILE in sub-folders too\n"
    "  -o         overwrite existing files when extracting\n";

[[noreturn]] void WrongCall(const std::string& line) {
    throw ToolError(line, ExitCode::WrongCall);
}

std::optional<Command> CommandOf(std::string_view word) {
    if (EqualsFolded(word, "n")) return Command::New;
    if (EqualsFolded(word, "x")) return Command::Extract;
    if (EqualsFolded(word, "l")) return Command::List;
    return std::nullopt;
}

// Takes the arguments one after another from the front.
class Reader {
 public:
    explicit Reader(std::span<const std::string> arguments) : rest_(arguments) {}

    bool IsAtEnd() const { return rest_.empty(); }
    const std::string& Front() const { return rest_.front(); }
    std::string Take() {
        const std::string& taken = rest_.front();
        rest_ = rest_.subspan(1);
        return taken;
    }
    std::string TakeValueOf(const std::string& option) {
        if (IsAtEnd()) WrongCall("option " + option + " needs a value");
        return Take();
    }

 private:
    std::span<const std::string> rest_;
};

// Takes an option, the first of the arguments, and its value.
void TakeOption(Reader& reader, CommandLine& call) {
    const std::string option = reader.Take();
    // "-p" and "-P" are two options; the case of all others does not matter.
    const std::string_view name = std::string_view(option).substr(1);
    if (name == "p") {
        call.KeepFolders = true;
    } else if (name == "P") {
        call.Prefixes.push_back(reader.TakeValueOf(option));
    } else if (EqualsFolded(name, "r")) {
        call.Recurse = true;
    } else if (EqualsFolded(name, "o")) {
        call.Overwrite = true;
    } else if (EqualsFolded(name, "m")) {
        const std::string value = reader.TakeValueOf(option);
        const std::optional<Method> method = ParseMethod(value);
        if (!method) {
            WrongCall("option " + option + ": there is no method \"" + value +
                      "\"; it is NONE, MSZIP or LZX:15 to LZX:21");
        }
        call.Compression = *method;
    } else {
        WrongCall("there is no option " + option);
    }
}

bool EndsInSeparator(const std::string& text) {
    return text.ends_with('/') || text.ends_with('\\');
}

bool AsksForHelp(const std::string& option) {
    const std::string_view name = std::string_view(option).substr(1);
    return name == "?" || EqualsFolded(name, "h") || name == "-help";
}

}  // namespace

CommandLine ParseCommandLine(std::span<const std::string> arguments, bool slashOptions) {
    CommandLine call;
    Reader reader(arguments);
    std::optional<Command> command;
    for (;;) {
        if (reader.IsAtEnd()) WrongCall(command ? "no cabinet is named" : "no command is given");
        const std::string& next = reader.Front();
        // After the command "/" begins the path of a cabinet.
        const bool isOption =
            next.size() > 1 && (next[0] == '-' || (slashOptions && !command && next[0] == '/'));
        if (isOption) {
            if (AsksForHelp(next)) return call;
            TakeOption(reader, call);
        } else if (!command) {
            command = CommandOf(next);
            if (!command) WrongCall("there is no command \"" + next + "\"");
            reader.Take();
        } else {
            break;
        }
    }
    call.Action = *command;
    call.Cabinet = reader.Take();
    if (call.Cabinet.empty()) WrongCall("the name of the cabinet is empty");
    while (!reader.IsAtEnd()) {
        call.Names.push_back(reader.Take());
        if (call.Names.back().empty()) WrongCall("the name of a file is empty");
    }
    if (call.Action == Command::New && call.Names.empty()) WrongCall("no file to pack is named");
    if (call.Action == Command::Extract && !call.Names.empty() && EndsInSeparator(call.Names.back())) {
        call.TargetFolder = call.Names.back();
        call.Names.pop_back();
    }
    return call;
}

std::string_view UsageText() {
    return kUsage;
}

}  // namespace tools::cabarc
