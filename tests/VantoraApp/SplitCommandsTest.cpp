#include "VantoraApp/CActionUtils.h"

#include <QtCore/QSet>
#include <gtest/gtest.h>

namespace {

TEST(SplitCommands, ConvertBothWaysAndAreAllDifferent)
{
    ASSERT_EQ(gCommandsList.size(), 43);
    for (int index = 0; index < gCommandsList.size(); ++index) {
        const QString keyword = CActionUtils::SplitComGetCommandString(index);
        EXPECT_EQ(keyword, gCommandsList[index]);
        EXPECT_EQ(keyword, keyword.toLower());
        EXPECT_EQ(CActionUtils::SplitComGetCommandIndex(keyword), index);
        EXPECT_EQ(CActionUtils::SplitComGetCommandIndex(keyword.toUpper()), index);
    }
}

struct CommandRow {
    const char* command;
    int index;
};

class SplitCommand : public testing::TestWithParam<CommandRow> {};

TEST_P(SplitCommand, HasItsFixedIndex)
{
    EXPECT_EQ(CActionUtils::SplitComGetCommandIndex(GetParam().command), GetParam().index);
}

// The first and the last of each group of rules.
INSTANTIATE_TEST_SUITE_P(
    Groups, SplitCommand,
    testing::Values(CommandRow{"splitiftextispresent", 0}, CommandRow{"splitifthistextrepeats", 6},
                    CommandRow{"skipheader", 7}, CommandRow{"providebasefilename", 8},
                    CommandRow{"getfilenamesfromlistinfile", 22}, CommandRow{"includeall", 23},
                    CommandRow{"includeiftextchangeafterstring", 27},
                    CommandRow{"excludeiftextispresent", 28},
                    CommandRow{"excludeifnotextcontainted", 31}, CommandRow{"extractfilename", 32},
                    CommandRow{"fillinfodictentry", 42}));

INSTANTIATE_TEST_SUITE_P(Spelling, SplitCommand,
                         testing::Values(CommandRow{"SkipHeader", 7}, CommandRow{"SKIPHEADER", 7},
                                         CommandRow{" skipheader", -1},
                                         CommandRow{"skipheader ", -1}, CommandRow{"skip", -1},
                                         CommandRow{"excludeifnotextcontained", -1},
                                         CommandRow{"", -1}));

TEST(SplitCommands, OutsideTheListAreInvalid)
{
    for (const int index : {43, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(CActionUtils::SplitComGetCommandString(index), "INVALID_INDEX") << index;
    }
    EXPECT_EQ(CActionUtils::SplitComGetCommandIndex("INVALID_INDEX"), -1);
}

} // namespace
