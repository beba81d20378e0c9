#include "VantoraApp/CErrorHandler.h"

#include <gtest/gtest.h>

namespace {

TEST(CErrorHandler, HasNoMessageAtFirst)
{
    CErrorHandler handler;
    EXPECT_EQ(handler.GetCount(), 0);
    EXPECT_EQ(handler.GetLast(), "Unknown error");
    EXPECT_EQ(handler.GetAt(0), "Unknown error");
}

TEST(CErrorHandler, KeepsMessagesInTheOrderOfStoring)
{
    CErrorHandler handler;
    handler.StoreError("Delete pages error");
    EXPECT_EQ(handler.GetCount(), 1);
    EXPECT_EQ(handler.GetAt(0), "Delete pages error");
    handler.StoreError("second");
    EXPECT_EQ(handler.GetAt(0), "Delete pages error");
    EXPECT_EQ(handler.GetAt(1), "second");
    EXPECT_EQ(handler.GetLast(), "second");
}

TEST(CErrorHandler, AnswersUnknownErrorOutsideTheList)
{
    CErrorHandler handler;
    handler.StoreError("only");
    for (const long index : {1L, -1L, 1L << 32, -(1L << 32)})
        EXPECT_EQ(handler.GetAt(index), "Unknown error") << index;
}

TEST(CErrorHandler, FormatsPrintfStyle)
{
    CErrorHandler handler;
    handler.StoreError("pages %d of %d", 3, 7);
    EXPECT_EQ(handler.GetLast(), "pages 3 of 7");
    handler.StoreError(QStringLiteral("Größe %s"), "100 % größer");
    EXPECT_EQ(handler.GetLast(), QStringLiteral("Größe 100 % größer"));
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
