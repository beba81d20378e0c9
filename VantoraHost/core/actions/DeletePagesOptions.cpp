#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace vantora::deletepages {

namespace {

QString rangeText(const PreferencesMap& preferences)
{
    return preferences.value(rangeKey).toString();
}

std::string shortened(const QString& range)
{
    constexpr int longest = 60;
    return range.size() <= longest ? range.toStdString()
                                   : range.left(longest).toStdString() + "...";
}

} // namespace

Outcome check(const PreferencesMap& preferences)
{
    const QString text = rangeText(preferences);
    if (!CActionUtils::ValidatePageRange(text, false)) {
        return fail(Reason::BadPageRange, {}, "\"" + shortened(text) + "\" is not a page range");
    }
    // Checking leaves spaces out, reading only ignores them around numbers: "3-1 5" would be fine
    // and take nothing.
    static const QRegularExpression splitNumber("\\d +\\d");
    if (text.contains(splitNumber)) {
        return fail(Reason::BadPageRange, {},
                    "\"" + shortened(text) + "\" has a space inside a number");
    }
    // A number that is too large, or not written in ASCII digits, reads as page 0, the only page
    // that a document of no pages can yield.
    QList<int> unreadable;
    CActionUtils::GetPageList(text, 0, false, false, &unreadable);
    if (!unreadable.isEmpty()) {
        return fail(Reason::BadPageRange, {},
                    "\"" + shortened(text) +
                        "\" has a number that is no page number: they go from 1 to 2147483647");
    }
    return {};
}

std::vector<int> pagesTaken(const PreferencesMap& preferences, int pageCount)
{
    QList<int> pages;
    CActionUtils::GetPageList(rangeText(preferences), pageCount, false, false, &pages);
    return {std::lower_bound(pages.cbegin(), pages.cend(), 1), pages.cend()};
}

int highestPageNamed(const PreferencesMap& preferences)
{
    int highest = 0;
    for (const QString& item : rangeText(preferences).split(',')) {
        highest = std::max(highest, item.section('-', -1).toInt());
    }
    return highest;
}

std::string shownRange(const PreferencesMap& preferences)
{
    return shortened(rangeText(preferences));
}

} // namespace vantora::deletepages
