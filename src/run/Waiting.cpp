#include "src/run/Waiting.h"

#include "src/common/Processes.h"

namespace velbooter {

void ShowWaitWindow(FrmWait& wait, Desktop& desktop, bool visible) {
    wait.Visible = visible;
    desktop.Repaint();
}

void SetWaitStatus(FrmWait& wait, Desktop& desktop, const std::string& status) {
    wait.LblStatus.Caption = status;
    desktop.Repaint();
}

ShownWaitWindow::ShownWaitWindow(FrmWait& wait, Desktop& desktop) : wait_(wait), desktop_(desktop) {
    ShowWaitWindow(wait_, desktop_, true);
}

ShownWaitWindow::~ShownWaitWindow() {
    ShowWaitWindow(wait_, desktop_, false);
}

void RunTool(Desktop& desktop, const std::string& commandLine, ToolWindow window) {
    constexpr int kNoTimeout = -1;
    RunAndWait(commandLine, kNoTimeout, false, window == ToolWindow::Hidden,
               [&desktop] { desktop.PendingEvents(); });
}

}  // namespace velbooter
