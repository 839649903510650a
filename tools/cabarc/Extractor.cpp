#include "tools/cabarc/Extractor.h"

#include <algorithm>
#include <system_error>

#include "tools/cabarc/CabinetReader.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc {

namespace {

constexpr std::uint16_t kDosAttributes = kReadOnly | kHidden | kSystem | kArchive;

// Makes a file writable or read-only. A refusal by the system is not reported here: it shows when the file
// is replaced.
void SetWritable(const std::filesystem::path& file, bool isWritable) {
    using std::filesystem::perm_options;
    using std::filesystem::perms;
    std::error_code ignored;
    std::filesystem::permissions(
        LongPath(file),
        isWritable ? perms::owner_write : perms::owner_write | perms::group_write | perms::others_write,
        isWritable ? perm_options::add : perm_options::remove, ignored);
}

}  // namespace

MemberFiles::MemberFiles(const CabinetDirectory& directory, std::span<const PlannedMember> plan,
                         bool overwrite)
    : directory_(directory), plan_(plan), overwrite_(overwrite) {}

MemberFiles::~MemberFiles() {
    if (clearedReadOnly_) SetWritable(open_->Target, false);
}

bool MemberFiles::Begin(std::size_t index) {
    const auto planned = std::lower_bound(
        plan_.begin(), plan_.end(), index,
        [](const PlannedMember& member, std::size_t wanted) { return member.Index < wanted; });
    if (planned == plan_.end() || planned->Index != index) return false;
    const std::filesystem::path& target = planned->Target;
    // The plan has checked this already, but another program may have created the file since.
    const FileKind kind = KindOf(target);
    if (!overwrite_ && kind != FileKind::Missing) RefuseExisting(target);
    open_ = &*planned;
    if (kind == FileKind::ReadOnly) {
        SetWritable(target, true);
        clearedReadOnly_ = true;
    }
    file_ = std::make_unique<OutputFile>(target);
    return true;
}

void MemberFiles::Write(std::span<const std::uint8_t> bytes) {
    file_->Write(bytes);
}

void MemberFiles::End() {
    const PlannedMember& planned = *open_;
    const CabinetMember& member = directory_.Members[planned.Index];
    file_->Commit();
    file_.reset();
    clearedReadOnly_ = false;
    const auto attributes = static_cast<std::uint8_t>(member.Attributes & kDosAttributes);
    if (!SetTimeAndAttributes(planned.Target, member.Modified, attributes))
        throw ToolError(Utf8FromPath(planned.Target) + ": its attributes cannot be set");
}

std::size_t Extract(const CommandLine& call) {
    RequireUnpacking();
    const CabinetDirectory directory = ReadCabinetFile(call.Cabinet);
    const std::vector<PlannedMember> plan =
        PlanExtraction(directory, call.Cabinet, call.Names, call.TargetFolder, call.Overwrite);
    // Packers may store equal files once, so even a sound cabinet that is small may hold more than any
    // drive.
    RequireSpace(directory, call.Cabinet, plan, FreeSpace(PathFromUtf8(call.TargetFolder)));
    MemberFiles files(directory, plan, call.Overwrite);
    UnpackCabinet(PathFromUtf8(call.Cabinet), call.Cabinet, directory, files);
    return plan.size();
}

}  // namespace tools::cabarc
