#pragma once
// A run of the wizard on two small disks: the custom disk, and the catalogue's disk "minimal".

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/FileDialogs.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/ShownWizard.h"

namespace velbooter::e2e {

class WizardTest : public testing::Test {
 protected:
    void SetUp() override {
        SetDisk("custom", SmallDisk());
        SetDisk("minimal", SmallDisk());
    }

    /// Replaces the configuration of a disk of the catalogue.
    void SetDisk(const std::string& name, const std::vector<std::string>& lines) const {
        std::string text;
        for (const std::string& line : lines) text += line + "\r\n";
        folder_.Write("files\\" + name + ".ini", text);
    }

    /// Starts the program and waits for the wizard.
    ShownWizard Open() {
        program_ = std::make_unique<ProgramUnderTest>(folder_, "");
        return ShownWizard(*program_);
    }

    /// Opens the wizard, chooses a disk and continues to `page`.
    ShownWizard OpenAt(int page, const std::string& disk = "custom") {
        ShownWizard wizard = Open();
        if (page == kWelcomePage) return wizard;
        wizard.GoTo(kDiskPage);
        wizard.SelectDisk(disk);
        wizard.GoTo(page);
        return wizard;
    }

    /// Expects the final page, on which only Finish and Help can be clicked.
    static void ExpectTheEnd(const ShownWizard& wizard, const std::string& outcome) {
        wizard.WaitForPage(kFinishedPage);
        EXPECT_EQ(outcome, wizard.Text(IDC_OUTCOME));
        EXPECT_THAT(wizard.Buttons(), testing::ElementsAre(IDC_FINISH, IDC_HELP_BUTTON));
        EXPECT_TRUE(wizard.Shows(IDC_BACK));
        EXPECT_TRUE(wizard.Shows(IDCANCEL));
        EXPECT_FALSE(wizard.Shows(IDC_NEXT));
    }

    /// Closes the wizard and expects the exit code of success, whether or not a disk has been built.
    void Leave(const ShownWizard& wizard) {
        wizard.Close();
        EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
    }

    /// Builds the small disk into `target` from the destination page, leaves the wizard and returns the
    /// image.
    FloppyImage FinishInto(const ShownWizard& wizard, const std::string& target) {
        wizard.Click(IDC_FINISH);
        ExpectTheEnd(wizard, "Operation completed successfully");
        EXPECT_EQ(target, wizard.Text(IDC_TARGET));
        Leave(wizard);
        return ExpectImage(folder_, target, kSmallImageBytes);
    }

    /// Cancels the file dialog `dialog` and waits until the wizard takes input again.
    void CancelBrowsing(const ShownWizard& wizard, HWND dialog) {
        CancelFileDialog(Program(), dialog);
        Program().WaitUntil([&] { return wizard.Takes(IDC_BROWSE); }, "the wizard takes no input again");
    }

    ProgramUnderTest& Program() { return *program_; }

    const DemoFolder folder_;

 private:
    std::unique_ptr<ProgramUnderTest> program_;
};

}  // namespace velbooter::e2e
