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

} // namespace
