#pragma once
// The only interface to the user at the screen. A step of a build calls nothing else that shows or asks
// anything. The real desktop shows system message boxes, dialogs and windows; tests script the answers and
// record what was shown.

#include <cstdint>
#include <optional>
#include <string>

#include "src/forms/Controls.h"

namespace velbooter {

/// The buttons of a message box, its picture, and the button that was pressed.
enum class Buttons { Ok, OkCancel, AbortRetryIgnore };
enum class Icon { None, Critical, Exclamation, Information };
enum class Answer { Ok, Cancel, Abort, Retry, Ignore };

/// A message box. With a help topic it also has a Help button, which opens that topic of HelpFile.
struct Message {
    std::string Text;
    std::string Title;
    Buttons Choice = Buttons::Ok;
    Icon Picture = Icon::None;
    std::string HelpFile = "";
    int HelpTopic = 0;
};

/// Results of the system's format dialog that mean "not formatted"; any other value means formatted.
enum FormatResult : std::int32_t {
    kFormatError = -1,
    kFormatCanceled = -2,
    kFormatNotPossible = -3,
};

/// Commands of the help viewer's published interface.
enum class HelpCommand : std::uint32_t {
    DisplayTopic = 0,
    DisplayContents = 1,
    DisplayIndex = 2,
    HelpContext = 15,  ///< shows the topic with a number
    CloseAll = 18,
};

class Desktop {
 public:
    virtual ~Desktop() = default;

    /// Shows the message and returns the button that was pressed, always one of `message.Choice` unless the
    /// system could not show it.
    virtual Answer ShowMessage(const Message& message) = 0;

    /// Shows the format dialog for drive A: and returns its result when it closes (a FormatResult or another
    /// value).
    virtual std::int32_t ShowFormatDialog() = 0;

    /// Shows a dialog that asks for an existing file, preset from `dialog`. Returns the full path, or nothing
    /// when the user cancelled.
    virtual std::optional<std::string> ShowOpenDialog(const CommonDialog& dialog) = 0;

    /// Shows a dialog that asks where to save a file, preset from `dialog`; it asks before an existing file
    /// is replaced. Returns the full path, or nothing when the user cancelled.
    virtual std::optional<std::string> ShowSaveDialog(const CommonDialog& dialog) = 0;

    /// Calls the system's help viewer: `owner` is a window's handle or 0, `file` the help file with its
    /// window type, `data` what the command asks for. The viewer's result is ignored.
    virtual void CallHelp(std::int32_t owner, const std::string& file, HelpCommand command,
                          std::uint32_t data) = 0;

    /// Returns whether the help viewer shows a window with this title, which a help window of another
    /// program may have, too.
    virtual bool IsHelpOpen(const std::string& title) = 0;

    /// Opens an address with its default program. A failure is not reported.
    virtual void OpenAddress(const std::string& address) = 0;

    /// Shows the driver selection above everything else; the caller has set its Visible. Returns when one of
    /// its handlers has cleared Visible.
    virtual void ShowDriverSelection() = 0;

    /// Brings the windows in line with the forms and paints them at once.
    virtual void Repaint() = 0;

    /// Does what Repaint does and handles pending events, except the user's input, which waits.
    virtual void PendingEvents() = 0;
};

}  // namespace velbooter
