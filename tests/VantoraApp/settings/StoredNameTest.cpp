#include "VantoraApp/settings/StoredName.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* name;
    QString typed;
    bool good;
};

TEST(ReasonAgainstName, IsEmptyForWhatCanBeAFileOfTheFolder)
{
    const Row rows[] = {
        {"a word", "Odd pages", true},
        {"nothing", "", true},
        {"spaces", "  x ", true},
        {"dots inside", "v1.0 ..x", true},
        {"a leading dot", ".hidden", true},
        {"percent signs and quotes", "50% \"off\" *?<>|:", true},
        {"the longest name", QString(251, 'n'), true},
        {"too long by one", QString(252, 'n'), false},
        {"too long in bytes", QString(126, QChar(0xe4)), false},
        {"far too long", QString(1000000, 'n'), false},
        {"a slash", "a/b", false},
        {"the folder above", "../x", false},
        {"a backslash", "a\\b", false},
        {"a path", "/etc/passwd", false},
        {"a dot", ".", false},
        {"two dots", "..", false},
        {"two dots and spaces", " .. ", false},
        {"a line break", "a\nb", false},
        {"a tab", "a\tb", false},
        {"a NUL", QString("a") + QChar(0) + "b", false},
        {"a delete character", QString("a") + QChar(0x7f), false},
        {"a control character above ASCII", QString("a") + QChar(0x85), false},
        {"half of a surrogate pair", QString("a") + QChar(0xd800), false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(ReasonAgainstName(row.typed, "/tmp", ".ini").isEmpty(), row.good) << row.name;
}

TEST(ReasonAgainstName, CountsTheFolderToo)
{
    const QString deep = "/tmp" + QString("/0123456789").repeated(370);
    EXPECT_EQ(ReasonAgainstName("n", deep, ".ini"), "");
    EXPECT_EQ(ReasonAgainstName(QString(100, 'n'), deep, ".ini"), "The name is too long.");
}

} // namespace
