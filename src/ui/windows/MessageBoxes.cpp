#include "src/ui/windows/MessageBoxes.h"

#include "src/ui/windows/FormWindow.h"
#include "src/ui/windows/HelpWindow.h"

namespace velbooter {

namespace {

UINT Style(const Message& message) {
    UINT style = 0;
    switch (message.Choice) {
        case Buttons::Ok:
            style |= MB_OK;
            break;
        case Buttons::OkCancel:
            style |= MB_OKCANCEL;
            break;
        case Buttons::AbortRetryIgnore:
            style |= MB_ABORTRETRYIGNORE;
            break;
    }
    switch (message.Picture) {
        case Icon::None:
            break;
        case Icon::Critical:
            style |= MB_ICONERROR;
            break;
        case Icon::Exclamation:
            style |= MB_ICONEXCLAMATION;
            break;
        case Icon::Information:
            style |= MB_ICONINFORMATION;
            break;
    }
    return style;
}

Answer FromButton(int button, Buttons choice) {
    switch (button) {
        case IDOK:
            return Answer::Ok;
        case IDABORT:
            return Answer::Abort;
        case IDRETRY:
            return Answer::Retry;
        case IDIGNORE:
            return Answer::Ignore;
        default:
            return choice == Buttons::AbortRetryIgnore ? Answer::Abort : Answer::Cancel;
    }
}

// What the box hands back to OpenHelp.
struct HelpRequest {
    const Message& Asking;
    CaughtFailure Failure;
};

void CALLBACK OpenHelp(LPHELPINFO info) {
    auto* request = reinterpret_cast<HelpRequest*>(info->dwContextId);
    const auto open = [&] {
        CallHtmlHelp(nullptr, request->Asking.HelpFile, HelpCommand::HelpContext,
                     static_cast<std::uintptr_t>(request->Asking.HelpTopic));
        return true;
    };
    request->Failure.Guard(open, false);
}

int ShowWithHelp(HWND owner, const Message& message) {
    HelpRequest request{message, {}};
    MSGBOXPARAMSA box{};
    box.cbSize = sizeof box;
    box.hwndOwner = owner;
    box.hInstance = ::GetModuleHandleA(nullptr);
    box.lpszText = message.Text.c_str();
    box.lpszCaption = message.Title.c_str();
    box.dwStyle = Style(message) | MB_HELP;
    box.dwContextHelpId = reinterpret_cast<DWORD_PTR>(&request);
    box.lpfnMsgBoxCallback = OpenHelp;
    const int button = ::MessageBoxIndirectA(&box);
    request.Failure.Rethrow();
    return button;
}

}  // namespace

Answer ShowMessageBox(HWND owner, const Message& message) {
    const int button = message.HelpTopic != 0 ? ShowWithHelp(owner, message)
                                              : ::MessageBoxA(owner, message.Text.c_str(),
                                                              message.Title.c_str(), Style(message));
    return FromButton(button, message.Choice);
}

}  // namespace velbooter
