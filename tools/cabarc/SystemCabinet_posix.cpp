#include "tools/cabarc/SystemCabinet.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::cabarc {

void RequireUnpacking() {
    throw ToolError("only the Windows build of cabarc extracts files; this one packs and lists");
}

void UnpackCabinet(const std::filesystem::path&, const std::string&, const CabinetDirectory&,
                   MemberReceiver&) {
    RequireUnpacking();
}

std::string MemberNameUtf8(const CabinetMember& member) {
    // There is no ANSI code page here. Packers on such systems often store UTF-8 without saying so.
    if ((member.Attributes & kNameIsUtf8) != 0 || IsUtf8(member.Name)) return member.Name;
    return PrintableBytes(member.Name);
}

}  // namespace tools::cabarc
