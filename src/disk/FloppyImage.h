#pragma once
// Turns the staging folder into a floppy image with the image tool in the application folder.

#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// Runs the image tool on StagingFolder for the image path in TxtDest, 1.44 MB when OptImage14 is chosen,
/// else 2.88 MB. Leaves the application folder as the current folder. Whether a new image is there then is
/// told by ImageMissing and changes nothing else. Raises RuntimeError when the application folder cannot be
/// made current.
void CreateImageFromDir(Application& app);

/// Sets the texts of the last two step lines for an image file or for a real floppy.
void FloppyImageLabels(Application& app, bool isImage);

}  // namespace velbooter
