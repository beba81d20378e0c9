#include "VantoraHost/core/PageRangeFault.h"

#include "VantoraApp/CActionUtils.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

using testing::HasSubstr;
using vantora::pageRangeFault;
using vantora::withoutLooseEnd;

TEST(PageRangeFault, IsTheTrueOneAndSaysWhatToWrite)
{
    const struct {
        const char* name;
        const char* range;
        const char* fault; ///< a part of it; null when the range is fine
    } rows[] = {
        {"several", "1,4-6,9-15,21", nullptr},
        {"spaces between", "1, 4 - 6", nullptr},
        {"the largest number", "2147483647", nullptr},
        {"empty", "", "names no page"},
        {"a comma in front", ",1", "begins with a comma"},
        {"a comma at the end", "1,2,", "ends with a comma"},
        {"two commas", "1,,2", "two commas with no page between"},
        {"page 0", "0", "names page 0"},
        {"page 0 as the start of a range", "0-3", "names page 0"},
        {"a leading zero", "1,05", "write 5"},
        {"descending", "2,6-4", "goes down at \"6-4\"; write 4-6"},
        {"a range of one page", "4-4", "write 4"},
        {"an open end", "2-", "no page after the dash of \"2-\"; write the last one"},
        {"an open beginning", "-3", "write 1-3"},
        {"a dash alone", "-", "dash without pages"},
        {"two dashes", "1-2-3", "more than one dash in \"1-2-3\""},
        {"an en dash", "1\u20133",
         "has the dash \"\u2013\" in \"1\u20133\", which is not the one "
         "of a keyboard; write 1-3"},
        {"a word for the last page", "2-last", "write the number, also for the last page"},
        {"a letter for the last page", "2-z", "write the number, also for the last page"},
        {"a word for all", "all", "has \"all\", and pages go by their numbers"},
        {"a semicolon", "1;2", "write 1,2"},
        {"a line's end", "1\n2", "the end of a line within"},
        {"a point", "1.5", "\"1.5\", which is no page number"},
        // These are valid, and would be read as something else than they say.
        {"a space inside a number", "1 2", "it would have meant no page at all"},
        {"a space inside the end", "3-1 5", "it would have meant no page at all"},
        {"a fraction", "\u00bd", "\"\u00bd\" would have meant no page at all"},
        {"digits of another script", "\u0663-5", "would have meant pages 1 to 5"},
        {"a number that is too large", "99999999999-5", "it would have meant pages 1 to 5"},
        {"an end that is too large", "1,3-99999999999", "higher than 2147483647"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto fault = pageRangeFault(QString::fromUtf8(row.range));
        ASSERT_EQ(fault.has_value(), row.fault != nullptr) << fault.value_or("").toStdString();
        if (fault) {
            EXPECT_THAT(fault->toStdString(), HasSubstr(row.fault));
        }
    }
}

// All short texts of the characters that matter.
TEST(PageRangeFault, IsNoneOnlyWhereARangeIsValidAndReadsAsItIsWritten)
{
    const QString characters = QString::fromUtf8("0129-, \u00bd\tx");
    constexpr int longest = 5;
    int fine = 0;
    const std::function<void(const QString&)> tryAll = [&](const QString& text) {
        if (text.size() < longest) {
            for (const QChar c : characters) {
                tryAll(text + c);
            }
        }
        QList<int> pages;
        CActionUtils::GetPageList(text, 200, false, false, &pages);
        QList<int> compact;
        CActionUtils::GetPageList(QString(text).remove(' '), 200, false, false, &compact);
        const bool asWritten = CActionUtils::ValidatePageRange(text, false) &&
                               !text.endsWith(',') && !pages.contains(0) && pages == compact;
        if (!pageRangeFault(text)) {
            ++fine;
            EXPECT_TRUE(asWritten) << text.toStdString();
        } else if (!text.contains(QString::fromUtf8("\u00bd")) && !text.trimmed().endsWith(',')) {
            EXPECT_FALSE(asWritten) << text.toStdString();
        }
    };
    tryAll({});
    EXPECT_GT(fine, 1000);
}

TEST(LooseEnd, IsOfCommasAndSpacesOnly)
{
    EXPECT_EQ(withoutLooseEnd("1,2,"), "1,2");
    EXPECT_EQ(withoutLooseEnd("1,4-6, \n"), "1,4-6");
    EXPECT_EQ(withoutLooseEnd(" ,, "), "");
    EXPECT_EQ(withoutLooseEnd("2-"), "2-");
    EXPECT_EQ(withoutLooseEnd("2-last"), "2-last");
}

} // namespace
