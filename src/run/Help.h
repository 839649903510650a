#pragma once
// The page-sensitive help: a thin object around the help viewer, and the rule that gives each page its topic.

#include <cstdint>
#include <string>

#include "src/forms/ProductTexts.h"
#include "src/run/Application.h"

namespace velbooter {

/// One request to the help viewer. The wizard asks for topics only by number; the class covers all of the
/// viewer's commands. Every call passes hWnd as owner and application folder + "\" + FileName + ">" +
/// HelpWindow as the file; what the viewer returns is ignored.
class clsHTMLHelp {
 public:
    /// Both must outlive the object.
    clsHTMLHelp(const ApplicationPaths& paths, Desktop& desktop) : paths_(paths), desktop_(desktop) {}

    std::int32_t hWnd = 0;   ///< the owner window; 0 for none
    std::string FileName;    ///< the help file, relative to the application folder
    std::string HelpWindow;  ///< the window type, defined in the help file, that shows the topics

    /// Shows the table of contents.
    void ShowHelpContents() const;
    /// Shows the index.
    void ShowHelpIndex() const;
    /// Asks for a topic by the number that `strTopicFileName` begins with: the text itself is not passed on.
    /// Raises RuntimeError 6 (overflow) when it does not fit 32 bits.
    void ShowTopicFileName(const std::string& strTopicFileName) const;
    /// Shows the topic with this number.
    void ShowTopicID(std::int32_t lngTopicID) const;

 private:
    void Call(HelpCommand command, std::int32_t data) const;

    const ApplicationPaths& paths_;
    Desktop& desktop_;
};

/// Page number that stands for the current page.
inline constexpr std::int16_t kCurrentPage = 255;

/// Shows the help topic of page `intStep` of the wizard (0 to 7, or kCurrentPage). Without `ForceShow`, the
/// topic is shown only in a help window that is already open. The topic's number is computed in 16 bits:
/// raises RuntimeError 6 (overflow) for a page number far out of range.
void ShowHelp(Application& app, std::int16_t intStep, bool ForceShow);

/// Returns a help file with the window type that its topics are shown in, as the help viewer takes them: the
/// full path, ">" and the name of the window type.
std::string HelpFileOf(const ApplicationPaths& paths, const std::string& file = kHelpFileName,
                       const std::string& window = kHelpWindow);

}  // namespace velbooter
