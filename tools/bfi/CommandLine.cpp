#include "tools/bfi/CommandLine.h"

#include "tools/shared/ToolError.h"

namespace tools::bfi {
namespace {

// Lists the types of disks.
std::string Types(const std::string& separator, const std::string& lastSeparator) {
    const auto geometries = floppy::AllGeometries();
    std::string types = geometries.front().Type;
    for (const floppy::Geometry& geometry : geometries.subspan(1))
        types += (&geometry == &geometries.back() ? lastSeparator : separator) + geometry.Type;
    return types;
}

std::string Usage() {
    std::string types;
    for (const floppy::Geometry& geometry : floppy::AllGeometries())
        types += std::string(types.empty() ? "  -t=  " : "       ") + geometry.Type + " for a " +
                 geometry.Name + " disk\n";
    return "Usage: bfi -b=BOOTSECTOR -l=LABEL -t=" + Types("|", "|") +
           " -f=IMAGE FOLDER\n"
           "Writes the image of a bootable DOS floppy (FAT12) that holds the tree below FOLDER.\n"
           "  -b=  file with the boot sector, 512 bytes\n"
           "  -l=  volume label, at most 11 characters\n" +
           types + "  -f=  image file; missing folders on its path are created, an older image is replaced";
}

[[noreturn]] void FailWithUsage(const std::string& line) {
    throw ToolError(line + "\n" + Usage(), ExitCode::WrongCall);
}

void SetOnce(std::string& value, const std::string& text, const std::string& what) {
    if (!value.empty()) FailWithUsage(what + " is given twice");
    if (text.empty()) FailWithUsage(what + " is empty");
    value = text;
}

}  // namespace

ImageRequest ParseCommandLine(const std::vector<std::string>& arguments) {
    ImageRequest request;
    std::string type;
    for (const std::string& argument : arguments) {
        const std::string option = argument.substr(0, 3);
        const std::string value = argument.substr(option.size());
        if (option == "-b=")
            SetOnce(request.BootSectorFile, value, option);
        else if (option == "-l=")
            SetOnce(request.Label, value, option);
        else if (option == "-t=")
            SetOnce(type, value, option);
        else if (option == "-f=")
            SetOnce(request.ImageFile, value, option);
        else if (argument.starts_with("-"))
            FailWithUsage(argument + ": there is no such option");
        else
            SetOnce(request.Folder, argument, "the folder");
    }
    if (request.BootSectorFile.empty()) FailWithUsage("the boot sector (-b=) is missing");
    if (request.Label.empty()) FailWithUsage("the label (-l=) is missing");
    if (type.empty()) FailWithUsage("the type (-t=) is missing");
    if (request.ImageFile.empty()) FailWithUsage("the image (-f=) is missing");
    if (request.Folder.empty()) FailWithUsage("the folder is missing");
    request.Format = floppy::GeometryOfType(type);
    if (request.Format == nullptr) FailWithUsage("-t=" + type + ": the type is " + Types(", ", " or "));
    return request;
}

}  // namespace tools::bfi
