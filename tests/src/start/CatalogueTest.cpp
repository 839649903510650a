#include "src/start/Catalogue.h"

#include <gtest/gtest.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;

class Catalogue : public ApplicationTest {
 protected:
    const std::vector<ListItem>& Fill(const std::string& content) {
        Folder.Write("files\\disklist.ini", content);
        Fill_DiskList(App);
        return Rows();
    }
    const std::vector<ListItem>& Rows() const { return App.Wizard.LV_Disk.ListItems; }

    void ExpectCustomRowAlone() {
        ASSERT_EQ(1u, Rows().size());
        const ListItem& row = Rows()[0];
        EXPECT_EQ("Custom, load default configuration", row.Text);
        EXPECT_EQ("custom", row.SubItem);
        EXPECT_EQ(1, row.Icon);
        EXPECT_EQ(1, row.SmallIcon);
        EXPECT_TRUE(row.Selected);
    }
};

TEST_F(Catalogue, CountZeroOrMissingGivesTheCustomRowSelected) {
    for (const char* content :
         {"", "[Disks_List]\r\nCount=0\r\n", "[Disks_List]\r\n", "[Disks_List]\r\nCount=x\r\n",
          "[Disks_List]\r\nCount=-3\r\n", "[1]\r\nName=a\r\n"}) {
        Fill(content);
        ExpectCustomRowAlone();
    }
}

TEST_F(Catalogue, AMissingFileGivesTheCustomRow) {
    Fill_DiskList(App);
    ExpectCustomRowAlone();
    EXPECT_EQ((std::vector<std::string>{}), Folder.Tree("")) << "the catalogue is never written";
}

TEST_F(Catalogue, AFolderInPlaceOfTheFileGivesTheCustomRow) {
    Folder.MakeFolder("files\\disklist.ini");
    Fill_DiskList(App);
    ExpectCustomRowAlone();
}

TEST_F(Catalogue, DisksFollowInTheirOrder) {
    Fill(
        "[Disks_List]\r\nCount=3\r\n[0]\r\nName=zero\r\n[3]\r\nName=third\r\nDesc=Third disk\r\nIcon=4\r\n"
        "[1]\r\nName=first\r\nDesc=First disk\r\nIcon=2\r\n[2]\r\nName=Second\r\nDesc=Second "
        "disk\r\nIcon=3\r\n"
        "[4]\r\nName=fourth\r\n");
    ASSERT_EQ(4u, Rows().size());
    EXPECT_EQ("custom", Rows()[0].SubItem);
    EXPECT_EQ("First disk", Rows()[1].Text);
    EXPECT_EQ("first", Rows()[1].SubItem);
    EXPECT_EQ("Second", Rows()[2].SubItem);
    EXPECT_EQ("Third disk", Rows()[3].Text);
    EXPECT_EQ(4, Rows()[3].Icon);
    EXPECT_EQ(4, Rows()[3].SmallIcon);
    for (size_t row = 0; row < 4; ++row) EXPECT_EQ(row == 0, Rows()[row].Selected) << row;
}

TEST_F(Catalogue, TextsEndAtTheirNul) {
    Fill("[Disks_List]\r\nCount=1\r\n[1]\r\nName=a\r\nDesc= two words \r\n");
    EXPECT_EQ("two words", Rows().at(1).Text);
    EXPECT_EQ("a", Rows().at(1).SubItem);
    EXPECT_EQ("a"s, Rows().at(1).SubItem);
}

TEST_F(Catalogue, PicturesAboveEightAreClampedInTheSmallSizeOnly) {
    struct Case {
        const char* icon;
        double large;
        int small;
    };
    const Case cases[] = {{"12", 12, 1},   {"8", 8, 8},        {"9", 9, 1},     {"1", 1, 1},
                          {"0", 0, 0},     {"", 0, 0},         {"-2", -2, -2},  {"x", 0, 0},
                          {"2.5", 2.5, 2}, {"3.5", 3.5, 4},    {"8.4", 8.4, 8}, {"8.6", 8.6, 1},
                          {"3abc", 3, 3},  {"30000", 30000, 1}};
    for (const Case& c : cases) {
        Fill("[Disks_List]\r\nCount=1\r\n[1]\r\nName=a\r\nIcon="s + c.icon + "\r\n");
        EXPECT_DOUBLE_EQ(c.large, Rows().at(1).Icon) << c.icon;
        EXPECT_EQ(Rows().at(1).SmallIcon, c.small) << c.icon;
    }
}

TEST_F(Catalogue, AMissingEntryHasEmptyTexts) {
    Fill("[Disks_List]\r\nCount=2\r\n[1]\r\nName=a\r\nDesc=A\r\n");
    ASSERT_EQ(3u, Rows().size());
    EXPECT_EQ("", Rows()[2].Text);
    EXPECT_EQ("", Rows()[2].SubItem);
    EXPECT_EQ(0, Rows()[2].SmallIcon);
}

TEST_F(Catalogue, TheListIsRebuilt) {
    Fill("[Disks_List]\r\nCount=1\r\n[1]\r\nName=a\r\n");
    App.Wizard.LV_Disk.ListItems[1].Selected = true;
    Fill("[Disks_List]\r\nCount=1\r\n[1]\r\nName=b\r\n");
    ASSERT_EQ(2u, Rows().size());
    EXPECT_EQ("b", Rows()[1].SubItem);
    EXPECT_FALSE(Rows()[1].Selected);
    EXPECT_TRUE(Rows()[0].Selected);
}

TEST_F(Catalogue, CountIsANumericPrefix) {
    EXPECT_EQ(3u, Fill("[Disks_List]\r\nCount=2 disks\r\n").size());
    EXPECT_EQ(3u, Fill("[Disks_List]\r\nCount=+2\r\n").size());
}

TEST_F(Catalogue, AnAbsurdCountIsAnOverflow) {
    for (const char* count : {"32767", "40000", "99999999999", "1e300"}) {
        try {
            Fill("[Disks_List]\r\nCount="s + count + "\r\n");
            ADD_FAILURE() << count;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(kOverflow, error.Number) << count;
            EXPECT_EQ(App.Paths.PathOf("files\\disklist.ini"), error.File);
        }
    }
}

TEST_F(Catalogue, LfLineEndsReadTheSame) {
    Fill("[Disks_List]\nCount=1\n[1]\nName=a\nDesc=A disk\n");
    EXPECT_EQ("a", Rows().at(1).SubItem);
    EXPECT_EQ("A disk", Rows().at(1).Text);
}

}  // namespace
}  // namespace velbooter::testing
