#include "src/run/Guard.h"

#include <new>

#include "src/forms/ProductTexts.h"
#include "src/run/CancelApp.h"

namespace velbooter {

void ShowRuntimeError(Desktop& desktop, const RuntimeError& error) {
    std::string text = "Error " + std::to_string(error.Number) + ": " + error.Text;
    if (!error.File.empty()) text += "\r\n" + error.File;
    desktop.ShowMessage({text, kProgramTitle, Buttons::Ok, Icon::Critical});
}

void ShowError(Desktop& desktop, const std::exception& error) {
    if (const auto* known = dynamic_cast<const RuntimeError*>(&error)) {
        ShowRuntimeError(desktop, *known);
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        ShowRuntimeError(desktop, RuntimeError(kOutOfMemory));
    } else {
        desktop.ShowMessage({std::string("The program stopped because of an internal error (") +
                                 error.what() + ").\r\n\r\nNo new disk was created.",
                             kProgramTitle, Buttons::Ok, Icon::Critical});
    }
}

bool RunGuarded(Application& app, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        ShowError(app.Screen, error);
        CancelApp(app);
        return false;
    }
}

}  // namespace velbooter
