#include "tools/cabarc/Extractor.h"

#include "tools/cabarc/CabinetReader.h"
#include "tools/cabarc/ExtractionPlan.h"
#include "tools/cabarc/MemberFiles.h"
#include "tools/cabarc/SystemCabinet.h"
#include "tools/shared/HostFiles.h"

namespace tools::cabarc {

std::size_t Extract(const CommandLine& call) {
    RequireUnpacking();
    const CabinetDirectory directory = ReadCabinetFile(call.Cabinet);
    const std::vector<PlannedMember> plan =
        PlanExtraction(directory, call.Cabinet, call.Names, call.TargetFolder, call.Overwrite);
    // Packers may store equal files once, so a small cabinet can honestly hold more than any drive.
    RequireSpace(directory, call.Cabinet, plan, FreeSpace(PathFromUtf8(call.TargetFolder)));
    MemberFiles files(directory, plan, call.Overwrite);
    UnpackCabinet(PathFromUtf8(call.Cabinet), call.Cabinet, directory, files);
    return plan.size();
}

}  // namespace tools::cabarc
