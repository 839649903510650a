#include "tools/cabarc/FolderPlan.h"

#include "tools/shared/ToolError.h"

namespace tools::cabarc {

void PlanFolders(CabinetDirectory& directory, std::uint16_t type) {
    if (directory.Members.size() > kMaxMembers) {
        throw ToolError("a cabinet holds at most " + std::to_string(kMaxMembers) + " files, not " +
                        std::to_string(directory.Members.size()));
    }
    directory.Folders.assign(1, CabinetFolder{0, 0, type});
    std::uint32_t used = 0;
    for (CabinetMember& member : directory.Members) {
        if (member.Size > kMaxFolderBytes - used) {
            if (directory.Folders.size() == kMaxFolders)
                throw ToolError("the files are too big for one cabinet");
            directory.Folders.push_back(CabinetFolder{0, 0, type});
            used = 0;
        }
        member.Folder = static_cast<std::uint16_t>(directory.Folders.size() - 1);
        member.Offset = used;
        used += member.Size;
    }
}

}  // namespace tools::cabarc
