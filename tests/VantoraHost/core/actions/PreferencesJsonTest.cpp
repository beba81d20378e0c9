#include "VantoraHost/core/actions/PreferencesJson.h"

#include <gtest/gtest.h>

namespace {

using vantora::preferencesJson;

TEST(PreferencesJson, IsOneLineOfAscii)
{
    EXPECT_EQ(preferencesJson({}), "{}");
    EXPECT_EQ(preferencesJson({{"b", 3}, {"a", "x\n\"\u00e9\U0001F600\x7f"}, {"c", true}}),
              R"({"a":"x\n\"\u00e9\ud83d\ude00\u007f","b":3,"c":true})");
}

TEST(PreferencesJson, KeepsWhatIsNested)
{
    EXPECT_EQ(preferencesJson({{"list", QVariantList{1, QVariantMap{{"a", 0.5}}}}, {"none", {}}}),
              R"({"list":[1,{"a":0.5}],"none":null})");
}

} // namespace
