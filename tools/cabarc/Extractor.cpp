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
    MemberFiles files(directory, plan, call.Overwrite);
    UnpackCabinet(PathFromUtf8(call.Cabinet), call.Cabinet, directory, files);
    return plan.size();
}

}  // namespace tools::cabarc
