#include "src/forms/WaitStatus.h"

namespace velbooter {

void ShowWaitWindow(Application& app, bool visible) {
    app.Wait.Visible = visible;
    app.Screen.Repaint();
}

void SetWaitStatus(Application& app, const std::string& status) {
    app.Wait.LblStatus.Caption = status;
    app.Screen.Repaint();
}

}  // namespace velbooter
