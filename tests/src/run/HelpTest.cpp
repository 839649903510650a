#include "src/run/Help.h"

#include <gtest/gtest.h>

#include "src/common/RuntimeError.h"
#include "src/run/RunEnd.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

class Help : public ApplicationTest {
 protected:
    Help() {
        Request.FileName = "own.chm";
        Request.HelpWindow = "Side";
    }
    void ExpectCall(std::uint32_t command, std::uint32_t data, std::int32_t owner = 0) {
        ASSERT_EQ(1u, Screen.HelpCalls.size());
        EXPECT_EQ((HelpCall{owner, Folder.At("own.chm>Side"), command, data}), Screen.HelpCalls[0]);
    }
    clsHTMLHelp Request{App.Paths, App.Screen};
};

TEST_F(Help, ContentsAreCommand1) {
    Request.ShowHelpContents();
    ExpectCall(1, 0);
}

TEST_F(Help, IndexIsCommand2) {
    Request.ShowHelpIndex();
    ExpectCall(2, 0);
}

TEST_F(Help, ATopicsFileNameIsHandedOnAsANumber) {
    Request.ShowTopicFileName("77 and more");
    ExpectCall(0, 77);
}

TEST_F(Help, ATopicsFileNameWithoutANumberIsNought) {
    Request.ShowTopicFileName("topic.htm");
    ExpectCall(0, 0);
}

TEST_F(Help, ANumberBeyond32BitsOverflows) {
    try {
        Request.ShowTopicFileName("3000000000");
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(kOverflow, error.Number);
    }
    EXPECT_TRUE(Screen.HelpCalls.empty());
}

TEST_F(Help, ATopicIsCommand15) {
    Request.ShowTopicID(1420);
    ExpectCall(15, 1420);
}

TEST_F(Help, TheOwnerIsHandedOn) {
    Request.hWnd = 4711;
    Request.ShowTopicID(1310);
    ExpectCall(15, 1310, 4711);
}

TEST_F(Help, EveryPageHasItsTopic) {
    for (std::int16_t page = 0; page < kPageCount; ++page) ShowHelp(App, page, true);
    ASSERT_EQ(8u, Screen.HelpCalls.size());
    for (std::uint32_t page = 0; page < kPageCount; ++page)
        EXPECT_EQ((HelpCall{0, Folder.At("corvane_help.chm>Down"), 15, 1310 + 10 * page}),
                  Screen.HelpCalls[page]);
}

TEST_F(Help, ThePage255IsTheCurrentOne) {
    App.CurrentStep = kDestinationPage;
    ShowHelp(App, 255, true);
    ASSERT_EQ(1u, Screen.HelpCalls.size());
    EXPECT_EQ(1360u, Screen.HelpCalls[0].Data);
}

TEST_F(Help, TopicsAreComputedIn16Bits) {
    ShowHelp(App, 3145, true);
    ShowHelp(App, -3277, true);
    ASSERT_EQ(2u, Screen.HelpCalls.size());
    EXPECT_EQ(32760u, Screen.HelpCalls[0].Data);
    EXPECT_EQ(static_cast<std::uint32_t>(-31460), Screen.HelpCalls[1].Data);
    for (const int page : {3146, 3148, 3276, 32767, -3278, -32768}) {
        try {
            ShowHelp(App, static_cast<std::int16_t>(page), true);
            ADD_FAILURE() << "no error for page " << page;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(kOverflow, error.Number);
        }
    }
    EXPECT_EQ(2u, Screen.HelpCalls.size());
}

TEST_F(Help, WithoutForceNothingIsOpened) {
    ShowHelp(App, 255, false);
    EXPECT_TRUE(Screen.HelpCalls.empty());
    Screen.HelpIsOpen = true;
    ShowHelp(App, 255, false);
    EXPECT_EQ(1u, Screen.HelpCalls.size());
}

TEST_F(Help, CancelLetsAnOpenHelpFollowToTheFinalPage) {
    Screen.HelpIsOpen = true;
    CancelApp(App);
    ASSERT_EQ(1u, Screen.HelpCalls.size());
    EXPECT_EQ(1370u, Screen.HelpCalls[0].Data);
}

}  // namespace
}  // namespace velbooter::testing
