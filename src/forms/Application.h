#pragma once
// What one run of the program shares. There are no globals: two applications can live in one process.

#include <cstdint>
#include <random>
#include <string>

#include "src/forms/Desktop.h"
#include "src/forms/FrmDrivers.h"
#include "src/forms/FrmWait.h"
#include "src/forms/FrmWizard.h"

namespace velbooter {

/// The working selection of drivers in the application folder: made at the start of a run, deleted at its
/// end.
inline constexpr const char* kDriverIndexFile = "Drivers.ini";

struct Application {
    /// `applicationFolder` without a trailing backslash; `desktop` must outlive the application.
    Application(const std::string& applicationFolder, Desktop& desktop)
        : ApplicationFolder(applicationFolder), Screen(desktop) {}
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Returns ApplicationFolder + "\" + `tail`.
    std::string PathOf(const std::string& tail) const { return ApplicationFolder + "\\" + tail; }

    std::string ApplicationFolder;
    std::string WindowsFolder;  ///< with a trailing backslash; "" when unknown
    std::string SystemFolder;   ///< the same

    Desktop& Screen;
    FrmWizard Wizard;
    FrmDrivers Drivers;
    FrmWait Wait;

    std::int16_t CurrentStep = kWelcomePage;  ///< the page shown
    std::int16_t SelectedDiskIndex = 0;       ///< 1-based row of LV_Disk; 0 means none
    bool SetupWinIncluded = false;
    bool SetupNTIncluded = false;
    bool RunEnded = false;      ///< a run is over or was cancelled
    bool ImageMissing = false;  ///< the image tool has run and has left no new image
    std::string StagingFolder;  ///< of the current run; "" before there is one

    /// Names the staging folders. Never seeded from the clock: every start tries the same sequence of names.
    std::minstd_rand StagingNumbers;
};

}  // namespace velbooter
