#include "realmode/unpack/Fault.h"

namespace realmode::unpack {

namespace {

struct Meaning {
    uint8_t ExitCode;
    const char* Text;
};

// In the order of the faults.
constexpr Meaning kMeanings[] = {
    {0, ""},
    {2, "cannot be opened"},
    {2, "cannot be read"},
    {3, "is not a cabinet"},
    {4, "is part of a set of cabinets"},
    {4, "is packed with an unknown method"},
    {5, "is damaged: it ends early"},
    {5, "is damaged: its list of files is wrong"},
    {5, "is damaged: a data record is wrong"},
    {5, "is damaged: a checksum is wrong"},
    {5, "is damaged: a code is wrong"},
    {5, "is damaged: a match is wrong"},
    {5, "is damaged: the packed data are wrong"},
    {6, "would leave the target folder"},
    {6, "is not a name for DOS"},
    {6, "is the name of a device"},
    {7, "needs more conventional memory"},
    {7, "needs more XMS memory"},
    {8, "does not fit on the disk"},
    {9, "cannot be created as a folder"},
    {9, "cannot be created"},
    {9, "cannot be written"},
    {10, "was stopped"},
};
static_assert(sizeof kMeanings / sizeof *kMeanings == static_cast<unsigned>(Fault::Stopped) + 1);

}  // namespace

uint8_t ExitCodeOf(Fault fault) {
    return kMeanings[static_cast<unsigned>(fault)].ExitCode;
}

const char* TextOf(Fault fault) {
    return kMeanings[static_cast<unsigned>(fault)].Text;
}

}  // namespace realmode::unpack
