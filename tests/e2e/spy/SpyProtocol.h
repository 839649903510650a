#pragma once
// What the tests and the spy, a library that the tests load into the program's own thread, agree on. Some
// facts are available only there: which picture a message box shows, and every text of the status line,
// however briefly it is shown.

namespace velbooter::e2e {

/// A registered message. Sent to a message box, it makes the spy set kPictureProperty on the box.
inline constexpr const char* kAskForPicture = "VelbooterE2eAskForPicture";

/// A window property: 1 more than the value of the Picture that the box shows.
inline constexpr const char* kPictureProperty = "VelbooterE2ePicture";

/// A registered message. Sent to a control, it makes the spy set kTextSizeProperty on the control. The first
/// parameter is a TextLook.
inline constexpr const char* kAskForTextSize = "VelbooterE2eAskForTextSize";

/// How a text is measured: on one line, in lines as wide as the control, or on one line in bold.
enum class TextLook { OneLine, InLines, Bold };

/// A window property: 1 more than the size in pixels that the control's text takes in its font, with the
/// width in the lower half.
inline constexpr const char* kTextSizeProperty = "VelbooterE2eTextSize";

/// An environment variable of the program: the full path of the file to which the spy adds each text that a
/// status line receives, a line each.
inline constexpr const char* kStatusFileVariable = "VELBOOTER_E2E_STATUS_FILE";

/// The spy's hook procedure, of the kind WH_CALLWNDPROCRET, as the library exports it.
inline constexpr const char* kSpyProcedure = "SpyProcedure";

/// The picture of a message box.
enum class Picture { None, Critical, Exclamation, Information, Other };

}  // namespace velbooter::e2e
