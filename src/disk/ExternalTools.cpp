#include "src/disk/ExternalTools.h"

#include "src/common/Webcollect.h"

namespace velbooter {

void RunTool(Application& app, const std::string& commandLine, ToolWindow window) {
    constexpr int kNoTimeout = -1;
    RunAndWait(commandLine, kNoTimeout, false, window == ToolWindow::Hidden,
               [&app] { app.Screen.PendingEvents(); });
}

}  // namespace velbooter
