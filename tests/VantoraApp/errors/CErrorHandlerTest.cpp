#include "VantoraApp/errors/CErrorHandler.h"

#include <gtest/gtest.h>

namespace {

TEST(CErrorHandler, KeepsMessagesInTheOrderOfStoringAndKnowsNoOthers)
{
    CErrorHandler handler;
    EXPECT_EQ(handler.GetLast(), "Unknown error");
    handler.StoreError("first");
    handler.StoreError("second");
    EXPECT_EQ(handler.GetCount(), 2);
    EXPECT_EQ(handler.GetAt(0), "first");
    EXPECT_EQ(handler.GetLast(), "second");
    for (const long index : {2L, -1L, 1L << 32, -(1L << 32)})
        EXPECT_EQ(handler.GetAt(index), "Unknown error") << index;
}

TEST(CErrorHandler, FormatsPrintfStyle)
{
    CErrorHandler handler;
    handler.StoreError(QStringLiteral("Größe %s von %d"), "100 % größer", 7);
    EXPECT_EQ(handler.GetLast(), QStringLiteral("Größe 100 % größer von 7"));
}

TEST(CErrorHandler, AppendsToTheExtraListAsWell)
{
    QList<QString> extra{"before"};
    CErrorHandler handler;
    handler.StoreError("early");
    handler.SetExtraErrorList(&extra);
    handler.StoreError("late");
    EXPECT_EQ(extra, (QList<QString>{"before", "late"}));

    handler.ClearAll();
    EXPECT_EQ(handler.GetCount(), 0);
    EXPECT_EQ(extra, (QList<QString>{"before", "late"}));

    handler.SetExtraErrorList(nullptr);
    handler.StoreError("alone");
    EXPECT_EQ(extra.size(), 2);
}

} // namespace
