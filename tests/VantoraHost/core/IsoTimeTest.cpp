#include "VantoraHost/core/IsoTime.h"

#include <gtest/gtest.h>

namespace {

using vantora::isoTime;

TEST(IsoTime, IsInUtcToTheNanosecond)
{
    const struct {
        std::string nanoseconds;
        const char* time;
    } rows[] = {
        {"0", "1970-01-01T00:00:00.000000000Z"},
        {"1785023999123456789", "2026-07-25T23:59:59.123456789Z"},
        {"-1", "1969-12-31T23:59:59.999999999Z"},
        {"", ""},
        {"soon", ""},
        {"12 ", ""},
        {"99999999999999999999", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(isoTime(row.nanoseconds), row.time) << row.nanoseconds;
    }
}

} // namespace
