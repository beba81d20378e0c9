#include "VantoraHost/cli/console/Messages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace vantora;
using namespace vantora::cli;

std::string printed(const Error& error)
{
    std::ostringstream out;
    std::ostringstream err;
    printError({0, out, err}, error);
    EXPECT_EQ(out.str(), "");
    return err.str();
}

TEST(ErrorMessage, NamesFileAndRemedyOnOneLine)
{
    EXPECT_EQ(printed({Reason::InputMissing, "a\nb.pdf", "there is no such file"}),
              "vantora: error: a\\nb.pdf: there is no such file; check the name\n");
    EXPECT_EQ(printed({Reason::LibraryFailed, "", "it failed\nbadly"}),
              "vantora: error: it failed\\nbadly\n");
}

TEST(Sizes, AreRoundedInTheirUnit)
{
    EXPECT_EQ(sizeText(0), "0 bytes");
    EXPECT_EQ(sizeText(1), "1 byte");
    EXPECT_EQ(sizeText(999), "999 bytes");
    EXPECT_EQ(sizeText(1000), "1.0 kB");
    EXPECT_EQ(sizeText(12345), "12.3 kB");
    EXPECT_EQ(sizeText(999949), "999.9 kB");
    EXPECT_EQ(sizeText(999950), "1.0 MB");
    EXPECT_EQ(sizeText(5000000000), "5.0 GB");
    EXPECT_EQ(sizeText(18446744073709551615U), "18446744.1 TB");
}

TEST(Numbers, AreGrouped)
{
    EXPECT_EQ(grouped(7), "7");
    EXPECT_EQ(grouped(999), "999");
    EXPECT_EQ(grouped(1000), "1,000");
    EXPECT_EQ(grouped(1234567), "1,234,567");
}

} // namespace
