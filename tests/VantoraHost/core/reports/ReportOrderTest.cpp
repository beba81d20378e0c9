#include "VantoraHost/core/reports/ReportOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;

class Order : public testing::Test {
protected:
    void add(std::size_t document)
    {
        DocumentReport report;
        report.input = std::to_string(document);
        order.add(document, std::move(report));
    }

    std::string passedOn;
    ReportOrder order{[this](const DocumentReport& report) { passedOn += report.input; }};
};

TEST_F(Order, IsThatOfTheDocuments)
{
    for (const std::size_t document : {3, 0, 4, 1}) {
        add(document);
    }
    EXPECT_EQ(passedOn, "01");
    EXPECT_EQ(order.firstMissing(), 2U);
    EXPECT_GT(order.bytesHeld(), 2 * sizeof(DocumentReport));
    add(2);
    EXPECT_EQ(passedOn, "01234");
    EXPECT_EQ(order.bytesHeld(), 0U);
}

TEST_F(Order, PassesTheRestOnWhenARunIsGivenUp)
{
    for (const std::size_t document : {5, 0, 2}) {
        add(document);
    }
    order.finish();
    EXPECT_EQ(passedOn, "025");
}

} // namespace
