#include "tools/shared/ToolMain.h"

#include <exception>
#include <new>

#include "tools/shared/HostProcess.h"
#include "tools/shared/ToolError.h"

namespace tools {

int RunTool(const std::string& program, const std::function<void()>& work) {
    UseSystemLibrariesOnly();
    ExitCode code = ExitCode::Failed;
    std::string line;
    try {
        work();
        return static_cast<int>(ExitCode::Done);
    } catch (const ToolError& error) {
        code = error.Code;
        line = error.what();
    } catch (const std::bad_alloc&) {
        line = "there is not enough memory";
    } catch (const std::exception& error) {
        line = error.what();
    }
    Print(Stream::Error, program + ": " + line + "\n");
    return static_cast<int>(code);
}

}  // namespace tools
