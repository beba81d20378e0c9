#include "VantoraApp/errors/GuardedOperation.h"

#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::string> reports;

const GuardedSite site{"folder/file", "Operation", 12};

const char* const siteReport = "==============================\n"
                               "Exception handled: system\n"
                               "File: folder/file\n"
                               "Function: Operation\n"
                               "Line: 12\n";

} // namespace

// Stands in for the sink, which writes nothing.
void StoreErrorToLog(const char* report)
{
    reports.push_back(report);
}

namespace {

TEST(GuardedOperation, GivesTheResultOfABodyThatEnds)
{
    EXPECT_EQ(RunGuarded(
                  site, [] { return 5; }, [] { return -1; }),
              5);
    EXPECT_TRUE(reports.empty());
}

TEST(GuardedOperation, TurnsAnyExceptionIntoTheFailureResultAndOneReport)
{
    struct Unrelated {};
    const std::vector<std::pair<const char*, void (*)()>> throwing = {
        {"a standard exception", [] { throw std::runtime_error("no"); }},
        {"a type nobody knows", [] { throw Unrelated(); }},
    };
    for (const auto& [name, fail] : throwing) {
        SCOPED_TRACE(name);
        reports.clear();
        const int result = RunGuarded(
            site,
            [fail = fail] {
                fail();
                return 5;
            },
            [] { return -1; });
        EXPECT_EQ(result, -1);
        EXPECT_EQ(reports, std::vector<std::string>{siteReport});
    }
}

TEST(GuardedOperation, CutsTheReportToItsBuffer)
{
    const std::string longName(2000, 'f');
    char buffer[1024 + 8];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_EQ(FormatExceptionReport({longName.c_str(), "f", 1}, buffer, 1024), 1023u);
    EXPECT_EQ(std::strlen(buffer), 1023u);
    EXPECT_EQ(buffer[1024], '#');

    reports.clear();
    RunGuarded(
        {longName.c_str(), "f", 1}, []() -> int { throw 0; }, [] { return 0; });
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0].size(), 1023u);
}

} // namespace
