// The entry of bfi, the writer of floppy images.

#include "tools/bfi/CommandLine.h"
#include "tools/bfi/ImageBuilder.h"
#include "tools/shared/HostProcess.h"
#include "tools/shared/ToolMain.h"

int main(int argc, char** argv) {
    return tools::RunTool(
        "bfi", [&] { tools::bfi::BuildImage(tools::bfi::ParseCommandLine(tools::Arguments(argc, argv))); });
}
