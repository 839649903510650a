// The command lines of the companions: any arguments are understood or rejected as a wrong call, and the
// result of understood ones is complete.

#include <algorithm>

#include "tests/fuzz/Choices.h"
#include "tests/fuzz/FuzzTarget.h"
#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/bfi/CommandLine.h"
#include "tools/cabarc/CommandLine.h"
#include "tools/shared/ToolError.h"

namespace fuzz {

namespace {

using Arguments = std::vector<std::string>;

// Arguments are separated by NULs, which none can contain.
Arguments Split(std::span<const std::uint8_t> input) {
    Arguments arguments;
    if (input.empty()) return arguments;
    arguments.emplace_back();
    for (const std::uint8_t byte : input) {
        if (byte == 0) {
            arguments.emplace_back();
        } else {
            arguments.back() += static_cast<char>(byte);
        }
    }
    return arguments;
}

template <typename Parse>
void RunParser(const Parse& parse) {
    try {
        parse();
    } catch (const tools::ToolError& error) {
        Require(error.Code == tools::ExitCode::WrongCall, "what cannot be understood is a wrong call");
        Require(*error.what() != 0, "a wrong call is reported");
    }
}

bool HasEmpty(const Arguments& texts) {
    return std::find(texts.begin(), texts.end(), "") != texts.end();
}

void ParseCabarc(const Arguments& arguments, bool slashOptions) {
    using namespace tools::cabarc;
    const CommandLine call = ParseCommandLine(arguments, slashOptions);
    if (call.Action == Command::Help) return;
    Require(!call.Cabinet.empty() && !HasEmpty(call.Names), "a name is not empty");
    Require(call.Action != Command::New || !call.Names.empty(), "there is something to pack");
    Require(call.TargetFolder.empty() || call.Action == Command::Extract, "only extraction has a target");
    const Method& method = call.Compression;
    Require(method.Type != Method::Kind::Lzx || (method.WindowBits >= 15 && method.WindowBits <= 21),
            "the window is one that the format has");
    // Nothing is lost: every argument that is no option is in the result.
    const std::size_t names = call.Names.size() + (call.TargetFolder.empty() ? 0 : 1);
    Require(std::equal(call.Names.begin(), call.Names.end(), arguments.end() - static_cast<int>(names)),
            "the names are the last arguments");
}

void ParseBfi(const Arguments& arguments) {
    const tools::bfi::ImageRequest request = tools::bfi::ParseCommandLine(arguments);
    Require(request.Format != nullptr, "the format is known");
    for (const std::string& text : {request.BootSectorFile, request.Label, request.ImageFile, request.Folder})
        Require(!text.empty(), "everything is given");
    Require(arguments.size() == 5, "everything is given once");
}

}  // namespace

void RunInput(std::span<const std::uint8_t> input) {
    const Arguments arguments = Split(input);
    RunParser([&] { ParseCabarc(arguments, false); });
    RunParser([&] { ParseCabarc(arguments, true); });
    RunParser([&] { ParseBfi(arguments); });
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    for (std::string line : {"",
                             "n|a.cab|*.*",
                             "-m|LZX:21|-p|-P|C:\\x\\|-r|n|a.cab|a|-b",
                             "/M|mszip|N|a.cab|x",
                             "x|-o|a.cab|*.txt|out\\",
                             "x|a.cab|out/",
                             "l|a.cab",
                             "-?",
                             "--help",
                             "-m|LZX:14|n|a|b",
                             "-m|none",
                             "-P",
                             "-q|n",
                             "n||",
                             "n|a.cab|",
                             "-|n|a|b",
                             "-b=boot.bin|-l=LABEL|-t=144|-f=a.img|folder",
                             "-t=288|folder|-f=a|-l=b|-b=c",
                             "-t=1680|-b=a|-l=b|-f=c|folder",
                             "-b=|-l=|-t=|-f=|",
                             "-b=a|-b=a",
                             "-t=145|-b=a|-l=b|-f=c|d",
                             "-x=1"}) {
        std::replace(line.begin(), line.end(), '|', '\0');
        seeds.push_back(tools::cabarc::testing::BytesOf(line));
    }
    return seeds;
}

}  // namespace fuzz
