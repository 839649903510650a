#include "src/setup/SetupData.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class Templates : public ::testing::Test {
 protected:
    /// Returns the error that the copy raises; its number is 0 when it raises none.
    RuntimeError ErrorOfCopy() {
        try {
            CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
        } catch (const RuntimeError& error) {
            return error;
        }
        return RuntimeError(0);
    }

    ApplicationFolder Folder;
};

TEST_F(Templates, TheAnswerFileBeginsAsTheTemplateByteForByte) {
    const std::string content = "\xEF; caf\xE9\n[Setup]\r\n\r\nkeyless line\r\nlast=1";
    Folder.Write("template.inf", content);
    Folder.Write("bin\\answers.inf", "an older and much longer answer file" + std::string(500, 'x'));
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ(content, Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, TheAnswerFileOfAReadOnlyTemplateCanBeWritten) {
    Folder.Write("template.inf", "t");
    Folder.SetAttributes("template.inf",
                         FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    Folder.MakeFolder("bin");
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ(0u, Folder.Attributes("bin\\answers.inf") & FILE_ATTRIBUTE_READONLY);
    EXPECT_NE(0u, Folder.Attributes("template.inf") & FILE_ATTRIBUTE_READONLY)
        << "the template stays as it is";
}

TEST_F(Templates, AReadOnlyAnswerFileIsReplaced) {
    Folder.Write("template.inf", "new");
    Folder.Write("bin\\answers.inf", "old");
    Folder.SetAttributes("bin\\answers.inf", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    CopyTemplate(Folder.At("template.inf"), Folder.At("bin\\answers.inf"));
    EXPECT_EQ("new", Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, AMissingTemplateIsNamedAndTheOldAnswerFileStays) {
    Folder.Write("bin\\answers.inf", "old");
    const RuntimeError error = ErrorOfCopy();
    EXPECT_EQ(kFileNotFound, error.Number);
    EXPECT_EQ(Folder.At("template.inf"), error.File);
    EXPECT_EQ("old", Folder.Read("bin\\answers.inf"));
}

TEST_F(Templates, AMissingFolderIsAnError) {
    Folder.Write("template.inf", "t");
    EXPECT_EQ(kPathNotFound, ErrorOfCopy().Number);
}

TEST_F(Templates, AnAnswerFileThatIsInUseIsNamed) {
    Folder.Write("template.inf", "t");
    LockedFile lock(Folder.Write("bin\\answers.inf", "old"));
    const RuntimeError error = ErrorOfCopy();
    EXPECT_EQ(kPermissionDenied, error.Number);
    EXPECT_EQ(Folder.At("bin\\answers.inf"), error.File);
}

}  // namespace
}  // namespace velbooter::testing
