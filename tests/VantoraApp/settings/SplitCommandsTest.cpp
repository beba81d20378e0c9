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
    }
}

// The first and the last of each group of rules, and what is no rule.
TEST(SplitCommands, HaveTheirFixedIndexInAnyCase)
{
    const std::pair<const char*, int> rows[] = {
        {"splitiftextispresent", 0},
        {"splitifthistextrepeats", 6},
        {"skipheader", 7},
        {"SkipHeader", 7},
        {"providebasefilename", 8},
        {"getfilenamesfromlistinfile", 22},
        {"includeall", 23},
        {"includeiftextchangeafterstring", 27},
        {"excludeiftextispresent", 28},
        {"excludeifnotextcontainted", 31},
        {"extractfilename", 32},
        {"fillinfodictentry", 42},
        {" skipheader", -1},
        {"skip", -1},
        {"excludeifnotextcontained", -1},
        {"", -1},
    };
    for (const auto& [command, index] : rows)
        EXPECT_EQ(CActionUtils::SplitComGetCommandIndex(command), index) << command;
}

TEST(SplitCommands, OutsideTheListAreInvalid)
{
    for (const int index : {43, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(CActionUtils::SplitComGetCommandString(index), "INVALID_INDEX") << index;
    }
}

} // namespace
