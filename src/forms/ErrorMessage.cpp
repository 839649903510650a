#include "src/forms/ErrorMessage.h"

#include "src/forms/ProductTexts.h"

namespace velbooter {

void ShowRuntimeError(Application& app, const RuntimeError& error) {
    std::string text = "Error " + std::to_string(error.Number) + ": " + error.Text;
    if (!error.File.empty()) text += "\r\n" + error.File;
    app.Screen.ShowMessage({text, kProgramTitle, Buttons::Ok, Icon::Critical});
}

}  // namespace velbooter
