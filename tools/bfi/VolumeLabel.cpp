#include "tools/bfi/VolumeLabel.h"

#include <algorithm>

#include "tools/shared/ToolError.h"
#include "tools/shared/Utf8.h"

namespace tools::bfi {

floppy::ShortName ToVolumeLabel(const std::string& label) {
    const std::string upper = UpperAscii(label);
    const std::string option = "-l=" + label + ": ";
    if (upper.empty()) throw ToolError("-l=: the volume label is empty");
    floppy::ShortName packed;
    if (upper.size() > packed.size()) throw ToolError(option + "a volume label has at most 11 characters");
    if (upper.front() == ' ') throw ToolError(option + "a volume label cannot begin with a blank");
    const auto isAllowed = [](char character) {
        return character == ' ' || floppy::IsShortNameCharacter(character);
    };
    if (!std::all_of(upper.begin(), upper.end(), isAllowed))
        throw ToolError(option + "a volume label holds only letters, digits, blanks and " +
                        std::string(floppy::kShortNameSigns));
    packed.fill(' ');
    std::copy(upper.begin(), upper.end(), packed.begin());
    return packed;
}

}  // namespace tools::bfi
