#pragma once
// The fixture of tests that work in a folder of their own, and simple functions to write and read files
// there and to run cabarc.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "tests/support/RunProgram.h"
#include "tests/support/TestData.h"
#include "tests/support/TestFolder.h"

namespace tools::cabarc::testing {

using namespace tools::testing;

/// Writes a file (name in UTF-8 with either slash) and its missing folders; reads a file, which must exist.
void WriteBytes(const std::string& file, const Bytes& contents);
Bytes ReadBytes(const std::string& file);

/// Sets the local modification time of a file, in calendar units.
void SetTime(const std::string& file, int year, int month, int day, int hour, int minute, int second);

/// Returns every file below `folder` with its contents; names are relative, with "/".
std::map<std::string, Bytes> TreeOf(const std::string& folder);

/// Runs a program in the working folder: `line` is its name and its arguments with one space between them.
ProgramResult RunLine(const std::string& line);

/// Runs the cabarc that was built with the tests; `arguments` as in RunLine.
ProgramResult RunCabarc(const std::string& arguments);

/// Creates an empty folder, which is the working folder during a test, and removes it afterwards.
class InTestFolder : public ::testing::Test {
 protected:
    InTestFolder();
    ~InTestFolder() override;
    InTestFolder(const InTestFolder&) = delete;
    InTestFolder& operator=(const InTestFolder&) = delete;

 private:
    TestFolder files_;

 protected:
    const std::filesystem::path Folder = files_.Path();

 private:
    std::filesystem::path before_;
};

}  // namespace tools::cabarc::testing
