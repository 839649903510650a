#include "tools/cabarc/CommandLine.h"

#include <gmock/gmock.h>

#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Words = std::vector<std::string>;

CommandLine Parsed(const Words& words, bool slashOptions = false) {
    return ParseCommandLine(words, slashOptions);
}

TEST(CommandLine, ReadsThePackingCall) {
    const CommandLine call = Parsed(
        {"-m", "LZX:21", "-p", "-r", "-P", "files\\net\\", "n", "cabs\\lib\\net.cab", "files\\net\\*.*"});
    EXPECT_EQ(Command::New, call.Action);
    EXPECT_EQ((Method{Method::Kind::Lzx, 21}), call.Compression);
    EXPECT_TRUE(call.KeepFolders);
    EXPECT_TRUE(call.Recurse);
    EXPECT_FALSE(call.Overwrite);
    EXPECT_THAT(call.Prefixes, ElementsAre("files\\net\\"));
    EXPECT_EQ("cabs\\lib\\net.cab", call.Cabinet);
    EXPECT_THAT(call.Names, ElementsAre("files\\net\\*.*"));
}

TEST(CommandLine, ReadsTheExtractingCalls) {
    const CommandLine one = Parsed({"-o", "x", "drivers\\aspi\\AHA154X.CAB", "scsi.txt"});
    EXPECT_EQ(Command::Extract, one.Action);
    EXPECT_TRUE(one.Overwrite);
    EXPECT_EQ("drivers\\aspi\\AHA154X.CAB", one.Cabinet);
    EXPECT_THAT(one.Names, ElementsAre("scsi.txt"));
    EXPECT_EQ("", one.TargetFolder);
    const CommandLine several = Parsed({"-o", "x", "drivers\\ndis\\E100B.cab", "ndis.*"});
    EXPECT_THAT(several.Names, ElementsAre("ndis.*"));
}

TEST(CommandLine, DefaultsToMszipAndNothingElse) {
    const CommandLine call = Parsed({"n", "a.cab", "x"});
    EXPECT_EQ((Method{Method::Kind::MsZip, 0}), call.Compression);
    EXPECT_FALSE(call.KeepFolders || call.Recurse || call.Overwrite);
    EXPECT_THAT(call.Prefixes, IsEmpty());
}

TEST(CommandLine, OptionLettersHaveNoCaseExceptThoseOfPathAndPrefix) {
    const CommandLine call = Parsed({"-R", "-O", "-M", "none", "-P", "one", "-P", "two", "N", "a.cab", "x"});
    EXPECT_TRUE(call.Recurse);
    EXPECT_TRUE(call.Overwrite);
    EXPECT_FALSE(call.KeepFolders);
    EXPECT_EQ(Method::Kind::Stored, call.Compression.Type);
    EXPECT_THAT(call.Prefixes, ElementsAre("one", "two"));
}

TEST(CommandLine, OptionsMayStandAfterTheCommandButNotAfterTheCabinet) {
    EXPECT_TRUE(Parsed({"n", "-r", "a.cab", "x"}).Recurse);
    EXPECT_THAT(Parsed({"n", "a.cab", "-r"}).Names, ElementsAre("-r"));
}

TEST(CommandLine, SlashIsAnOptionOnlyBeforeTheCommandAndWhereAsked) {
    EXPECT_TRUE(Parsed({"/r", "n", "/a.cab", "x"}, true).Recurse);
    EXPECT_EQ("/a.cab", Parsed({"/r", "n", "/a.cab", "x"}, true).Cabinet);
    EXPECT_THROW(Parsed({"/r", "n", "a.cab", "x"}, false), ToolError);
}

TEST(CommandLine, TheLastNameOfAnExtractionMayBeItsFolder) {
    const CommandLine call = Parsed({"x", "a.cab", "*.txt", "out\\"});
    EXPECT_EQ("out\\", call.TargetFolder);
    EXPECT_THAT(call.Names, ElementsAre("*.txt"));
    EXPECT_EQ("out/", Parsed({"x", "a.cab", "out/"}).TargetFolder);
    EXPECT_THAT(Parsed({"l", "a.cab", "out/"}).Names, ElementsAre("out/"));
}

TEST(CommandLine, HelpIsNoFailure) {
    for (const char* option : {"-?", "-h", "-H", "--help"})
        EXPECT_EQ(Command::Help, Parsed({option}).Action) << option;
    EXPECT_EQ(Command::Help, Parsed({"/?"}, true).Action);
    EXPECT_THAT(std::string(UsageText()), HasSubstr("usage: cabarc"));
}

TEST(CommandLine, RefusesWrongCallsAndSaysWhy) {
    struct WrongCase {
        Words Arguments;
        const char* Reason;
    };
    const WrongCase cases[] = {
        {{}, "no command is given"},
        {{"-r"}, "no command is given"},
        {{"q", "a.cab"}, "there is no command \"q\""},
        {{"a.cab"}, "there is no command \"a.cab\""},
        {{"n"}, "no cabinet is named"},
        {{"x", "-o"}, "no cabinet is named"},
        {{"n", "a.cab"}, "no file to pack is named"},
        {{"n", "", "x"}, "the name of the cabinet is empty"},
        {{"n", "a.cab", ""}, "the name of a file is empty"},
        {{"-z", "n", "a.cab", "x"}, "there is no option -z"},
        {{"-pr", "n", "a.cab", "x"}, "there is no option -pr"},
        {{"-", "n", "a.cab", "x"}, "there is no command \"-\""},
        {{"-m"}, "option -m needs a value"},
        {{"-P"}, "option -P needs a value"},
        {{"-m", "ZIP", "n", "a.cab", "x"}, "option -m: there is no method \"ZIP\""},
        {{"-m", "LZX:22", "n", "a.cab", "x"}, "there is no method \"LZX:22\""},
    };
    for (const WrongCase& entry : cases) {
        try {
            Parsed(entry.Arguments);
            ADD_FAILURE() << ::testing::PrintToString(entry.Arguments) << " was accepted";
        } catch (const ToolError& error) {
            EXPECT_EQ(ExitCode::WrongCall, error.Code);
            EXPECT_THAT(error.what(), HasSubstr(entry.Reason));
        }
    }
}

TEST(Method, ReadsItsNames) {
    for (int bits = 15; bits <= 21; ++bits) {
        EXPECT_EQ((Method{Method::Kind::Lzx, bits}), ParseMethod("lzx:" + std::to_string(bits)));
    }
    EXPECT_EQ((Method{Method::Kind::MsZip, 0}), ParseMethod("MsZip"));
    for (const char* text : {"", "LZX", "LZX:", "LZX:14", "LZX:22", "LZX:21x", "LZX:+21", "LZX: 21", "LZX21",
                             "NONE ", "LZX:99999999999"}) {
        EXPECT_EQ(std::nullopt, ParseMethod(text)) << text;
    }
}

TEST(Method, HasTheNumbersOfTheFormat) {
    EXPECT_EQ(0, MethodCode({Method::Kind::Stored, 0}));
    EXPECT_EQ(1, MethodCode({Method::Kind::MsZip, 0}));
    EXPECT_EQ(0x1503, MethodCode({Method::Kind::Lzx, 21}));
    EXPECT_EQ(0x0F03, MethodCode({Method::Kind::Lzx, 15}));
    EXPECT_EQ("LZX:21", MethodName(0x1503));
    EXPECT_EQ("QUANTUM:20", MethodName(0x1472));
    EXPECT_EQ("method 7", MethodName(7));
}

}  // namespace
}  // namespace tools::cabarc::testing
