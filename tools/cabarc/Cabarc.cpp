#include "tools/cabarc/Cabarc.h"

#include "tools/cabarc/CabinetReader.h"
#include "tools/cabarc/CommandLine.h"
#include "tools/cabarc/Extractor.h"
#include "tools/cabarc/Listing.h"
#include "tools/cabarc/Packer.h"
#include "tools/shared/HostProcess.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

namespace {

#ifdef _WIN32
constexpr bool kSlashOptions = true;
#else
constexpr bool kSlashOptions = false;  // "/" begins a path here
#endif

std::string Files(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " file" : " files");
}

}  // namespace

void Run(std::span<const std::string> arguments) {
    const CommandLine call = ParseCommandLine(arguments, kSlashOptions);
    switch (call.Action) {
        case Command::Help:
            Print(Stream::Output, std::string(UsageText()));
            break;
        case Command::New: {
            const PackReport report = Pack(call);
            Print(Stream::Output, Shown(call.Cabinet) + ": " + Files(report.Files) + ", " +
                                      std::to_string(report.BytesIn) + " bytes packed into " +
                                      std::to_string(report.BytesOut) + "\n");
            break;
        }
        case Command::Extract: {
            const std::size_t count = Extract(call);
            Print(Stream::Output, Shown(call.Cabinet) + ": " + Files(count) + " extracted\n");
            break;
        }
        case Command::List:
            Print(Stream::Output, ListingOf(ReadCabinetFile(call.Cabinet), call.Cabinet, call.Names));
            break;
    }
}

}  // namespace tools::cabarc
