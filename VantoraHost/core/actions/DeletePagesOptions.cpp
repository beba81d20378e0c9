#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/page_ranges/PlainNumber.h"
#include "VantoraHost/core/PageRangeFault.h"

#include <QtCore/QString>

#include <algorithm>

namespace vantora::deletepages {

namespace {

QString rangeText(const PreferencesMap& preferences)
{
    return preferences.value(rangeKey).toString();
}

std::string shortenedRange(const QString& range)
{
    constexpr int longest = 60;
    return shortened(range, longest).toStdString();
}

Outcome accept(PreferencesMap& preferences)
{
    const QString given = rangeText(preferences);
    const QString range = withoutLooseEnd(given);
    if (const auto fault = pageRangeFault(range)) {
        return fail(Reason::BadPageRange, {},
                    "the page range \"" + shortenedRange(given) + "\" " + fault->toStdString());
    }
    preferences.insert(rangeKey, range);
    return {};
}

int highestPageNamed(const QString& range)
{
    int highest = 0;
    for (const QStringRef& item : range.splitRef(',')) {
        highest = std::max(highest, NumberOf(item.mid(item.lastIndexOf('-') + 1)));
    }
    return highest;
}

PageEffect effect(const PreferencesMap& preferences, int pageCount)
{
    const QString range = rangeText(preferences);
    QList<int> pages;
    CActionUtils::GetPageList(range, pageCount, false, false, &pages);
    PageEffect effect;
    effect.taken.assign(pages.cbegin(), pages.cend());
    effect.emptied = pageCount > 0 && pages.size() == pageCount;
    const int highest = highestPageNamed(range);
    if (highest > pageCount) {
        effect.unmet.push_back("the range " + shownRange(preferences) + " names pages up to " +
                               std::to_string(highest) + ", but the document has " +
                               std::to_string(pageCount) + (pageCount == 1 ? " page" : " pages") +
                               (pages.isEmpty() ? "; none was taken out" : ""));
    }
    return effect;
}

std::string emptiedText(const PreferencesMap& preferences)
{
    return "the range " + shownRange(preferences) + " names every page";
}

} // namespace

const KnownAction& description()
{
    static const KnownAction known = {
        actionName, {{rangeKey, true}}, true, Access::RemovePages, rangeKey, accept,
        effect,     emptiedText};
    return known;
}

std::string shownRange(const PreferencesMap& preferences)
{
    return shortenedRange(rangeText(preferences));
}

} // namespace vantora::deletepages
