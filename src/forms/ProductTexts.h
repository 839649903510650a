#pragma once
// Names that several layers show, here so that each is written once.

namespace velbooter {

/// Title of the program's windows, and of a message box that has no title of its own.
inline constexpr const char* kProgramTitle = "The Veltrane";

/// The help file in the application folder, and the window type that its topics are shown in.
inline constexpr const char* kHelpFileName = "corvane_help.chm";
inline constexpr const char* kHelpWindow = "Down";
inline constexpr const char* kHelpWindowTitle = "The Corvane Help";

/// Where the two links of the final page lead.
inline constexpr const char* kHomePage = "https://www.example.com/veltrane";
inline constexpr const char* kFrameworkSite = "https://www.example.org/modboot";

}  // namespace velbooter
