#include "src/common/SingleInstance.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace velbooter {
namespace {

/// A folder name that no other test process uses.
std::string OwnFolder() {
    return "C:\\Apps\\Velbooter" + std::to_string(GetCurrentProcessId());
}

TEST(SingleInstances, ASecondOneInTheSameFolderIsNotTheFirst) {
    const SingleInstance first(OwnFolder());
    EXPECT_TRUE(first.IsFirst());
    const SingleInstance second(OwnFolder());
    EXPECT_FALSE(second.IsFirst());
    EXPECT_TRUE(first.IsFirst());
}

TEST(SingleInstances, CaseOfTheFolderDoesNotCount) {
    const SingleInstance first(OwnFolder() + "\\DATA");
    const SingleInstance second(OwnFolder() + "\\data");
    EXPECT_FALSE(second.IsFirst());
}

TEST(SingleInstances, AnotherFolderIsAnotherInstance) {
    const SingleInstance first(OwnFolder());
    EXPECT_TRUE(SingleInstance(OwnFolder() + "2").IsFirst());
    EXPECT_TRUE(SingleInstance(OwnFolder() + "\\sub").IsFirst());
    EXPECT_TRUE(SingleInstance("C:\\Apps_Velbooter" + std::to_string(GetCurrentProcessId())).IsFirst());
}

TEST(SingleInstances, TheMarkIsHeldAsLongAsTheInstanceLives) {
    { EXPECT_TRUE(SingleInstance(OwnFolder()).IsFirst()); }
    const SingleInstance next(OwnFolder());
    EXPECT_TRUE(next.IsFirst());
}

TEST(SingleInstances, LongAndForeignFolderNamesWork) {
    const std::string folder = OwnFolder() + "\\" + std::string(200, 'x') + "\\B\xFCro";
    const SingleInstance first(folder);
    EXPECT_TRUE(first.IsFirst());
    EXPECT_FALSE(SingleInstance(folder).IsFirst());
}

}  // namespace
}  // namespace velbooter
