#pragma once
// Turns a folder tree into the image file of a bootable floppy. Nothing is written before the whole tree is
// known to fit and to have names that can be stored; the image appears under its name only when it is
// complete.

#include <string>

#include "floppy/Geometry.h"

namespace tools::bfi {

/// What one run of the tool is to do; all texts are UTF-8.
struct ImageRequest {
    std::string BootSectorFile;                ///< path
    std::string Label;                         ///< as the user wrote it; see ToVolumeLabel
    const floppy::Geometry* Format = nullptr;  ///< never nullptr in a request that is carried out
    std::string ImageFile;                     ///< path; missing folders on it are created
    std::string Folder;                        ///< what is below it becomes the disk's contents
};

/// Writes the image, replacing an older one. Throws ToolError with one line that says what is wrong: the
/// boot sector, the label, a name, a file that cannot be read, too little space, an image that would replace
/// its own source or that cannot be written. Then there is no new image, and an older one is untouched.
void BuildImage(const ImageRequest& request);

}  // namespace tools::bfi
