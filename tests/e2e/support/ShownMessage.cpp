#include "tests/e2e/support/ShownMessage.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "tests/e2e/support/HarnessFailure.h"
#include "tests/e2e/support/WindowTree.h"
#include "tests/support/Patience.h"

namespace velbooter::e2e {

namespace {

constexpr const char* kPictureNames[] = {"none", "critical", "exclamation", "information", "another"};

std::string WithoutAccessKey(std::string text) {
    std::erase(text, '&');
    return text;
}

bool IsTextOfMessage(const WindowInfo& child) {
    const LONG type = ::GetWindowLongA(child.Handle, GWL_STYLE) & SS_TYPEMASK;
    return child.Class == "Edit" || (child.Class == "Static" && type != SS_ICON);
}

std::vector<WindowInfo> ButtonsOf(HWND box) {
    std::vector<WindowInfo> buttons = ChildWindows(box);
    std::erase_if(buttons, [](const WindowInfo& child) { return child.Class != "Button" || !child.Visible; });
    const auto left = [](const WindowInfo& button) {
        RECT place{};
        ::GetWindowRect(button.Handle, &place);
        return place.left;
    };
    std::sort(buttons.begin(), buttons.end(),
              [&](const WindowInfo& a, const WindowInfo& b) { return left(a) < left(b); });
    return buttons;
}

// The spy answers a moment after the window itself.
Picture AskForPictureOf(HWND box) {
    ::SendNotifyMessageA(box, ::RegisterWindowMessageA(kAskForPicture), 0, 0);
    INT_PTR answer = 0;
    const auto hasReported = [&] {
        answer = reinterpret_cast<INT_PTR>(::GetPropA(box, kPictureProperty));
        return answer != 0;
    };
    if (!Eventually(hasReported)) throw HarnessFailure("the spy did not report the picture of a message box");
    return static_cast<Picture>(answer - 1);
}

}  // namespace

void PrintTo(const ShownMessage& message, std::ostream* out) {
    *out << "\n  title   \"" << message.Title << "\"\n  text    \"";
    for (const char character : message.Text) {
        if (character == '\r') {
            *out << "\\r";
        } else if (character == '\n') {
            *out << "\\n";
        } else {
            *out << character;
        }
    }
    *out << "\"\n  buttons";
    for (const std::string& button : message.Buttons) *out << " [" << button << "]";
    *out << "\n  icon    " << kPictureNames[static_cast<size_t>(message.Icon)] << "\n";
}

ShownMessage ReadMessageBox(HWND box) {
    ShownMessage message;
    message.Title = TextOf(box);
    for (const WindowInfo& child : ChildWindows(box)) {
        if (IsTextOfMessage(child)) message.Text += TextOf(child.Handle);
    }
    for (const WindowInfo& button : ButtonsOf(box)) {
        message.Buttons.push_back(WithoutAccessKey(TextOf(button.Handle)));
    }
    message.Icon = AskForPictureOf(box);
    return message;
}

void PressButton(HWND box, const std::string& button) {
    for (const WindowInfo& child : ButtonsOf(box)) {
        if (WithoutAccessKey(TextOf(child.Handle)) != button) continue;
        // Posted, because a message that is sent would wait for everything that follows in the program.
        ::PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(child.Id), 0);
        return;
    }
    throw HarnessFailure("a message box has no button \"" + button + "\"");
}

}  // namespace velbooter::e2e
