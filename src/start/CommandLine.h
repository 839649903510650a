#pragma once
// The program's command line: what a batch run is asked to build.

#include <string>

#include "src/run/ApplicationPaths.h"
#include "src/run/Desktop.h"

namespace velbooter {

/// The values of a command line, as the user wrote them: nothing but the plugin's name has been looked up.
struct CommandLineValues {
    std::string DiskName;    ///< never empty in a result of ParseCommandLine
    std::string TargetPath;  ///< "" for the disk's own target; may be relative to the application folder
    int ImageType = 0;       ///< 0 not given, 1 for 1.44 MB, 2 for 2.88 MB
    bool UseKeyFile = false;
    std::string PluginName;    ///< "" for none
    bool DriversFlag = false;  ///< accepted and passed on, but not used
    bool ShowDriverDialog = false;
    bool ParameterError = false;  ///< an option was wrong and has been reported
};

/// Returns the usage text, its lines ended by CR LF.
std::string UsageText();

/// Parses `commandLine`, which is split at every single space; quotes have no meaning. Each option error is
/// shown when it is found. Ends the program (ProgramEnd) when no disk is named.
CommandLineValues ParseCommandLine(const ApplicationPaths& paths, Desktop& desktop,
                                   const std::string& commandLine);

}  // namespace velbooter
