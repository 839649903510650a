#pragma once
// Turns a folder tree into the image file of a bootable floppy. Nothing is written before the whole tree is
// known to fit and to have names that can be stored; the image takes its place only when it is complete.

#include <string>

#include "floppy/Geometry.h"

namespace tools::bfi {

/// One run of the tool; all texts are UTF-8.
struct ImageRequest {
    std::string BootSectorFile;
    std::string Label;
    const floppy::Geometry* Format = nullptr;  ///< never nullptr in a request that is carried out
    std::string ImageFile;
    std::string Folder;
};

/// Writes the image, replacing an older one. Throws ToolError with one line that says what is wrong; then no
/// image is made and an older one is untouched.
void BuildImage(const ImageRequest& request);

}  // namespace tools::bfi
