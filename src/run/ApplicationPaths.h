#pragma once
// Where the program's files are: the application folder, what it contains, and the two folders of the running
// Windows. The names that functions below return are relative to the application folder; PathOf turns them
// into full paths.

#include <string>

namespace velbooter {

/// The tree that is built for a disk, and the one that the staging folders are in. Both are deleted when a
/// run ends.
inline constexpr const char* kCabsFolder = "cabs";
inline constexpr const char* kStagingTree = "Temp";

/// The working selection of drivers: created at the start of a run, deleted at its end.
inline constexpr const char* kDriverIndexFile = "Drivers.ini";

/// The catalogue of disk configurations.
inline constexpr const char* kCatalogueFile = "files\\disklist.ini";

/// The user's data for an unattended setup.
inline constexpr const char* kKeyFile = "keyfile.txt";

/// The image's file name when none is given.
inline constexpr const char* kDefaultImageName = "BootDisk.img";

/// Return the name of an entry in one of the trees: the disk that is being built, the sources of modules and
/// configurations, the DOS system files, the driver cabinets, the plugins.
inline std::string InCabs(const std::string& entry) {
    return std::string(kCabsFolder) + "\\" + entry;
}
inline std::string InFiles(const std::string& entry) {
    return "files\\" + entry;
}
inline std::string InDos(const std::string& entry) {
    return "dos\\" + entry;
}
inline std::string InDrivers(const std::string& entry) {
    return "drivers\\" + entry;
}
inline std::string InPlugins(const std::string& entry) {
    return "plugins\\" + entry;
}

/// Returns whether `path` begins with a drive letter and a colon.
bool HasDrive(const std::string& path);

/// The folders, and the rules that turn a name into a path. Nothing is looked up in the file system.
struct ApplicationPaths {
    /// `applicationFolder` has no trailing backslash.
    explicit ApplicationPaths(const std::string& applicationFolder) : ApplicationFolder(applicationFolder) {}

    /// Returns ApplicationFolder + "\" + `tail`.
    std::string PathOf(const std::string& tail) const { return ApplicationFolder + "\\" + tail; }

    /// Returns `path` when it begins with a drive letter, else PathOf(path), also for a path that begins with
    /// a backslash.
    std::string FullPathOf(const std::string& path) const;

    /// Returns the rest of `path` after the application folder, without leading backslashes; `path` itself
    /// when it does not begin with that folder. The prefix is compared as text, ignoring case, so it is also
    /// removed from a folder whose name merely begins like it.
    std::string RelativePathOf(const std::string& path) const;

    std::string ApplicationFolder;
    std::string WindowsFolder;  ///< with a trailing backslash; "" when unknown
    std::string SystemFolder;   ///< the same
};

}  // namespace velbooter
