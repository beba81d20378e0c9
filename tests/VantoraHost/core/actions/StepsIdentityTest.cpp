#include "VantoraHost/core/actions/StepsIdentity.h"

#include <gtest/gtest.h>

#include <QtCore/QDate>

#include <algorithm>

namespace {

using namespace vantora;

Step step(const std::string& action, const PreferencesMap& preferences)
{
    Step step;
    step.action.name = action;
    step.preferences = preferences;
    return step;
}

TEST(StepsIdentity, DiffersWithEverythingThatStepsAre)
{
    const std::vector<Step> steps = {step("Cut", {{"pages", "1"}}), step("Turn", {{"by", 90}})};
    const struct {
        const char* name;
        std::vector<Step> steps;
    } rows[] = {
        {"no steps", {}},
        {"fewer steps", {steps[0]}},
        {"another order", {steps[1], steps[0]}},
        {"a step twice", {steps[0], steps[1], steps[1]}},
        {"another action", {step("Cut all", {{"pages", "1"}}), steps[1]}},
        {"another value", {step("Cut", {{"pages", "2"}}), steps[1]}},
        {"a value of another type", {step("Cut", {{"pages", 1}}), steps[1]}},
        {"another option", {step("Cut", {{"page", "1"}}), steps[1]}},
        {"an option more", {step("Cut", {{"pages", "1"}, {"x", ""}}), steps[1]}},
        {"a value that JSON has no form for", {step("Cut", {{"pages", QDate(2020, 1, 1)}})}},
        {"another one of these", {step("Cut", {{"pages", QDate(2020, 1, 2)}})}},
        {"a step's options moved to its name", {step("Cut pages 1", {}), steps[1]}},
    };
    std::vector<std::string> digests = {stepsDigest(steps)};
    EXPECT_EQ(stepsDigest({steps[0], steps[1]}), digests[0]);
    for (const auto& row : rows) {
        const std::string digest = stepsDigest(row.steps);
        EXPECT_EQ(digest.size(), 64U) << row.name;
        EXPECT_EQ(std::count(digests.begin(), digests.end(), digest), 0) << row.name;
        digests.push_back(digest);
    }
}

TEST(StepsIdentity, CanBeReadByPeople)
{
    EXPECT_EQ(
        stepsJson({step("Cut", {{"pages", "1"}}), step("Turn", {{"by", 90}})}),
        R"([{"action":"Cut","options":{"pages":"1"}},{"action":"Turn","options":{"by":90}}])");
}

} // namespace
