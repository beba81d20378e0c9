#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const KnownAction& known = deletepages::description();

PreferencesMap withRange(const QString& range)
{
    return {{deletepages::rangeKey, range}};
}

TEST(DescriptionOfDeletePages, IsFoundByItsName)
{
    EXPECT_EQ(knownAction("Delete Pages"), &known);
    EXPECT_EQ(knownAction("Rotate Pages"), nullptr);
    EXPECT_THAT(known.keys(), ElementsAre("byPageRangeTextEdit"));
}

TEST(RangeOption, IsAcceptedWithoutItsLooseEnd)
{
    PreferencesMap preferences = withRange("1,4-6, ");
    ASSERT_TRUE(known.accept(preferences));
    EXPECT_EQ(preferences, withRange("1,4-6"));
}

TEST(RangeOption, IsRefusedWithItsFault)
{
    PreferencesMap none;
    for (PreferencesMap preferences : {withRange("6-4,"), withRange(" "), none}) {
        const PreferencesMap before = preferences;
        const Outcome accepted = known.accept(preferences);
        ASSERT_FALSE(accepted);
        EXPECT_EQ(accepted.error().reason, Reason::BadPageRange);
        EXPECT_THAT(accepted.error().sentence, HasSubstr("the page range \""));
        EXPECT_EQ(preferences, before);
    }
}

TEST(RangeOption, IsCutInMessagesWhenItIsLong)
{
    PreferencesMap odd = withRange(QString("1,3,").repeated(100000) + "x");
    EXPECT_EQ(deletepages::shownRange(withRange("1,3")), "1,3");
    EXPECT_THAT(deletepages::shownRange(odd), testing::EndsWith("1,3,..."));
    EXPECT_LT(known.accept(odd).error().sentence.size(), 250U);
}

TEST(EffectOfARange, TellsWhatGoesAndWhatIsNotThere)
{
    const PageEffect some = known.effect(withRange("3,12-40,7"), 20);
    EXPECT_THAT(some.taken, ElementsAre(3, 7, 12, 13, 14, 15, 16, 17, 18, 19, 20));
    EXPECT_THAT(some.unmet, ElementsAre(HasSubstr("names pages up to 40")));
    EXPECT_FALSE(some.emptied);
    const PageEffect all = known.effect(withRange("1-3"), 3);
    EXPECT_TRUE(all.emptied);
    EXPECT_THAT(all.unmet, IsEmpty());
}

} // namespace
