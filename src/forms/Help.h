#pragma once
// The page-sensitive help: a thin object around the help viewer, and the rule by which a page has its topic.

#include <cstdint>
#include <string>

#include "src/forms/Application.h"

namespace velbooter {

/// One request to the help viewer. Every call passes hWnd as owner and application folder + "\" + FileName +
/// ">" + HelpWindow as the file; what the viewer returns is ignored.
class clsHTMLHelp {
 public:
    /// `app` must outlive the object.
    explicit clsHTMLHelp(Application& app) : app_(app) {}

    std::int32_t hWnd = 0;   ///< the owner window; 0 for none
    std::string FileName;    ///< the help file, relative to the application folder
    std::string HelpWindow;  ///< the window type, defined in the help file, that shows the topics

    /// Shows the table of contents.
    void ShowHelpContents() const;
    /// Shows the index.
    void ShowHelpIndex() const;
    /// Asks for a topic by the number that `strTopicFileName` begins with: the text itself is not handed on.
    /// Raises RuntimeError 6 (overflow) when it does not fit 32 bits.
    void ShowTopicFileName(const std::string& strTopicFileName) const;
    /// Shows the topic with this number.
    void ShowTopicID(std::int32_t lngTopicID) const;

 private:
    void Call(std::uint32_t command, std::int32_t data) const;

    Application& app_;
};

/// Page number that stands for the current page.
inline constexpr std::int16_t kCurrentPage = 255;

/// Shows the help topic of page `intStep` of the wizard (0 to 7, or kCurrentPage). Without `ForceShow` only
/// an open help window follows; none is opened. The topic's number is computed in 16 bits: raises
/// RuntimeError 6 (overflow) for a page that is far beyond any.
void ShowHelp(Application& app, std::int16_t intStep, bool ForceShow);

/// Hides page `hidden` of the wizard and shows page `shown`; an open help window follows.
void TurnPage(Application& app, std::int16_t hidden, std::int16_t shown);

}  // namespace velbooter
