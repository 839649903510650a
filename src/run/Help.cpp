#include "src/run/Help.h"

#include <cmath>
#include <limits>

#include "src/common/RuntimeError.h"
#include "src/common/Text.h"

namespace velbooter {

namespace {

// Converts a result to 16 bits. Raises RuntimeError 6 (overflow) when it does not fit.
std::int16_t Narrow(int value) {
    if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
        throw RuntimeError(kOverflow);
    return static_cast<std::int16_t>(value);
}

std::int16_t TopicOf(std::int16_t page) {
    return Narrow(Narrow(Narrow(page + 1) * 10) + 1300);
}

}  // namespace

void clsHTMLHelp::Call(HelpCommand command, std::int32_t data) const {
    desktop_.CallHelp(hWnd, HelpFileOf(paths_, FileName, HelpWindow), command,
                      static_cast<std::uint32_t>(data));
}

void clsHTMLHelp::ShowHelpContents() const {
    Call(HelpCommand::DisplayContents, 0);
}

void clsHTMLHelp::ShowHelpIndex() const {
    Call(HelpCommand::DisplayIndex, 0);
}

void clsHTMLHelp::ShowTopicFileName(const std::string& strTopicFileName) const {
    const double number = std::nearbyint(NumericPrefix(strTopicFileName));
    if (number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max())
        throw RuntimeError(kOverflow);
    Call(HelpCommand::DisplayTopic, static_cast<std::int32_t>(number));
}

void clsHTMLHelp::ShowTopicID(std::int32_t lngTopicID) const {
    Call(HelpCommand::HelpContext, lngTopicID);
}

void ShowHelp(Application& app, std::int16_t intStep, bool ForceShow) {
    if (!ForceShow && !app.Screen.IsHelpOpen(kHelpWindowTitle)) return;
    const std::int16_t page = intStep == kCurrentPage ? app.CurrentStep : intStep;
    clsHTMLHelp help(app.Paths, app.Screen);
    help.FileName = kHelpFileName;
    help.HelpWindow = kHelpWindow;
    help.ShowTopicID(TopicOf(page));
}

std::string HelpFileOf(const ApplicationPaths& paths, const std::string& file, const std::string& window) {
    return paths.PathOf(file) + ">" + window;
}

}  // namespace velbooter
