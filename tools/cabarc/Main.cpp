#include "tools/cabarc/Cabarc.h"
#include "tools/cabarc/CommandLine.h"
#include "tools/shared/HostProcess.h"
#include "tools/shared/ToolError.h"
#include "tools/shared/ToolMain.h"

int main(int argc, char** argv) {
    const int code = tools::RunTool("cabarc", [&] { tools::cabarc::Run(tools::Arguments(argc, argv)); });
    if (code == static_cast<int>(tools::ExitCode::WrongCall))
        tools::Print(tools::Stream::Error, std::string(tools::cabarc::UsageText()));
    return code;
}
