#include "realmode/unpack/MemberPath.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kMaxStem = 8;
constexpr uint32_t kMaxExtension = 3;

bool IsNameCharacter(char c) {
    if (static_cast<uint8_t>(c) <= ' ') return false;
    for (const char* refused = "\"*+,./:;<=>?[\\]|"; *refused != '\0'; ++refused)
        if (c == *refused) return false;
    return true;
}

// Passes over up to `most` characters of a name; false when there is none.
bool PassName(const char*& at, uint32_t most) {
    const char* const begin = at;
    while (most > 0 && IsNameCharacter(*at)) {
        ++at;
        --most;
    }
    return at != begin;
}

bool GoesUp(const char* part) {
    return part[0] == '.' && part[1] == '.' && (part[2] == '\\' || part[2] == '\0');
}

// Checks one part of a path and passes over it.
bool PassPart(const char*& at) {
    if (!PassName(at, kMaxStem)) return false;
    if (*at != '.') return true;
    ++at;
    return PassName(at, kMaxExtension);
}

}  // namespace

Fault CheckPath(char* path) {
    for (char* c = path; *c != '\0'; ++c) {
        if (*c == '/') *c = '\\';
        if (*c == ':') return Fault::LeavesTarget;
    }
    if (*path == '\\') return Fault::LeavesTarget;
    for (const char* part = path;; ++part) {
        if (GoesUp(part)) return Fault::LeavesTarget;
        if (!PassPart(part)) return Fault::NotADosName;
        if (*part == '\0') return Fault::None;
        if (*part != '\\') return Fault::NotADosName;
    }
}

uint32_t FolderLength(const char* path) {
    uint32_t length = 0;
    for (uint32_t i = 0; path[i] != '\0'; ++i)
        if (path[i] == '\\') length = i;
    return length;
}

}  // namespace realmode::unpack
