#include "tools/shared/OutputFile.h"

#include "tools/shared/HostFiles.h"
#include "tools/shared/HostText.h"
#include "tools/shared/ToolError.h"

namespace tools {
namespace {

// Windows replaces a read-only file in some ways and not in others, POSIX always: one check for all.
void RefuseUnlessReplaceable(const std::filesystem::path& target) {
    const FileKind kind = KindOf(target);
    if (kind == FileKind::Folder) throw ToolError(Utf8FromPath(target) + ": is a folder");
    if (kind == FileKind::Special) throw ToolError(Utf8FromPath(target) + ": is not an ordinary file");
    if (kind == FileKind::ReadOnly) throw ToolError(Utf8FromPath(target) + ": is read-only");
}

// On Windows a colon begins the name of a stream of another file, which would be neither a file of its own
// nor seen.
bool IsStream(const std::filesystem::path& target) {
    using Unit = std::filesystem::path::value_type;
    return std::filesystem::path::preferred_separator == static_cast<Unit>('\\') &&
           target.filename().native().find(static_cast<Unit>(':')) !=
               std::filesystem::path::string_type::npos;
}

}  // namespace

OutputFile::OutputFile(const std::filesystem::path& target) : target_(target) {
    if (!target.has_filename() || IsStream(target))
        throw ToolError("\"" + Utf8FromPath(target) + "\": is not the name of a file");
    RefuseUnlessReplaceable(target);
    if (target.has_parent_path()) CreateFolders(target.parent_path());
    part_ = std::make_unique<PartFile>(target);
}

OutputFile::~OutputFile() = default;

void OutputFile::Write(std::span<const std::uint8_t> bytes) {
    part_->WriteAt(size_, bytes);
    size_ += bytes.size();
}

void OutputFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
    part_->WriteAt(offset, bytes);
}

void OutputFile::Resize(std::uint64_t size) {
    part_->Resize(size);
}

std::uint64_t OutputFile::Size() const {
    return size_;
}

void OutputFile::Commit() {
    RefuseUnlessReplaceable(target_);
    part_->MoveToTarget();
}

}  // namespace tools
