#include "src/forms/ErrorMessage.h"

#include <new>

#include "src/forms/ProductTexts.h"

namespace velbooter {

void ShowRuntimeError(Application& app, const RuntimeError& error) {
    std::string text = "Error " + std::to_string(error.Number) + ": " + error.Text;
    if (!error.File.empty()) text += "\r\n" + error.File;
    app.Screen.ShowMessage({text, kProgramTitle, Buttons::Ok, Icon::Critical});
}

void ShowError(Application& app, const std::exception& error) {
    if (const auto* known = dynamic_cast<const RuntimeError*>(&error)) {
        ShowRuntimeError(app, *known);
    } else if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr) {
        ShowRuntimeError(app, RuntimeError(kOutOfMemory));
    } else {
        app.Screen.ShowMessage({std::string("The program has stopped at a fault of its own (") +
                                    error.what() + ").\r\n\r\nNo new disk was made.",
                                kProgramTitle, Buttons::Ok, Icon::Critical});
    }
}

}  // namespace velbooter
