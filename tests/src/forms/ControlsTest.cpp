#include "src/forms/Controls.h"

#include <gtest/gtest.h>

namespace velbooter::testing {
namespace {

using Texts = std::vector<std::string>;

class ListSorting : public ::testing::Test {
 protected:
    void Add(const std::string& text, const std::string& subItem) {
        ListItem row;
        row.Text = text;
        row.SubItem = subItem;
        List.ListItems.push_back(row);
    }
    /// Sorts by the column and returns the texts of the rows.
    Texts SortedBy(std::int16_t column, SortOrder order) {
        List.Sorted = true;
        List.SortKey = column;
        List.Order = order;
        SortRows(List);
        return RowTexts();
    }
    Texts RowTexts() const {
        Texts texts;
        for (const ListItem& row : List.ListItems) texts.push_back(row.Text);
        return texts;
    }

    ListView List;
};

TEST_F(ListSorting, ANewListIsNotSorted) {
    EXPECT_FALSE(List.Sorted);
    EXPECT_EQ(0, List.SortKey);
    EXPECT_EQ(SortOrder::Ascending, List.Order);
}

TEST_F(ListSorting, AListThatIsNotSortedKeepsItsOrder) {
    Add("b", "1");
    Add("a", "2");
    SortRows(List);
    EXPECT_EQ((Texts{"b", "a"}), RowTexts());
}

TEST_F(ListSorting, TheKeyChoosesTheColumn) {
    Add("b", "2");
    Add("c", "1");
    Add("a", "3");
    EXPECT_EQ((Texts{"a", "b", "c"}), SortedBy(0, SortOrder::Ascending));
    EXPECT_EQ((Texts{"c", "b", "a"}), SortedBy(1, SortOrder::Ascending));
    EXPECT_EQ((Texts{"a", "b", "c"}), SortedBy(1, SortOrder::Descending));
    EXPECT_EQ((Texts{"c", "b", "a"}), SortedBy(0, SortOrder::Descending));
}

TEST_F(ListSorting, CaseDoesNotCount) {
    for (const char* text : {"delta", "Charlie", "BRAVO", "alpha", "Echo"}) Add(text, "");
    EXPECT_EQ((Texts{"alpha", "BRAVO", "Charlie", "delta", "Echo"}), SortedBy(0, SortOrder::Ascending));
}

TEST_F(ListSorting, RowsThatAreAlikeKeepTheirPlacesInBothDirections) {
    Add("1", "same");
    Add("2", "other");
    Add("3", "SAME");
    Add("4", "same");
    EXPECT_EQ((Texts{"2", "1", "3", "4"}), SortedBy(1, SortOrder::Ascending));
    EXPECT_EQ((Texts{"1", "3", "4", "2"}), SortedBy(1, SortOrder::Descending));
}

TEST_F(ListSorting, ManyRowsThatAreAlikeKeepTheirPlaces) {
    Texts expected;
    for (int i = 0; i < 1000; ++i) {
        expected.push_back(std::to_string(i));
        Add(expected.back(), "same");
    }
    EXPECT_EQ(expected, SortedBy(1, SortOrder::Ascending));
    EXPECT_EQ(expected, SortedBy(1, SortOrder::Descending));
}

TEST_F(ListSorting, EverythingOfARowMovesWithIt) {
    Add("b", "2");
    Add("a", "1");
    List.ListItems[0].Checked = true;
    List.ListItems[0].Selected = true;
    List.ListItems[0].Icon = 3;
    List.ListItems[0].SmallIcon = 4;
    EXPECT_EQ((Texts{"a", "b"}), SortedBy(0, SortOrder::Ascending));
    EXPECT_FALSE(List.ListItems[0].Checked);
    EXPECT_FALSE(List.ListItems[0].Selected);
    EXPECT_TRUE(List.ListItems[1].Checked);
    EXPECT_TRUE(List.ListItems[1].Selected);
    EXPECT_EQ("2", List.ListItems[1].SubItem);
    EXPECT_EQ(3, List.ListItems[1].Icon);
    EXPECT_EQ(4, List.ListItems[1].SmallIcon);
}

TEST_F(ListSorting, EmptyTextsComeFirst) {
    Add("a", "x");
    Add("b", "");
    Add("c", "A");
    Add("d", "");
    EXPECT_EQ((Texts{"b", "d", "c", "a"}), SortedBy(1, SortOrder::Ascending));
    EXPECT_EQ((Texts{"a", "c", "b", "d"}), SortedBy(1, SortOrder::Descending));
}

TEST_F(ListSorting, AnEmptyListAndASingleRowStayAsTheyAre) {
    EXPECT_EQ((Texts{}), SortedBy(1, SortOrder::Ascending));
    Add("a", "");
    EXPECT_EQ((Texts{"a"}), SortedBy(0, SortOrder::Descending));
}

TEST_F(ListSorting, LettersWithMarksStandBesideTheirLetter) {
    Add("Zebra", "");
    Add("\xC4pfel", "");
    Add("Apfel", "");
    Add("Birne", "");
    const Texts sorted = SortedBy(0, SortOrder::Ascending);
    EXPECT_EQ("Birne", sorted[2]);
    EXPECT_EQ("Zebra", sorted[3]);
}

}  // namespace
}  // namespace velbooter::testing
