#include "VantoraHost/core/reports/RunSummary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace vantora;

TEST(RunSummary, CountsByWhatBecameOfDocuments)
{
    RunSummary summary;
    EXPECT_EQ(summary.workText(1), "");
    DocumentReport report;
    report.status = DocumentStatus::Done;
    report.bytesBefore = 1500;
    report.bytesAfter = 1000;
    report.pagesRemoved = {2, 3};
    summary.add(report);
    report.inPart = report.leftBlank = true;
    report.warnings = {"one"};
    report.repairs = {"two"};
    report.losses = {{3, "gone"}};
    summary.add(report);
    DocumentReport skipped;
    skipped.status = DocumentStatus::Skipped;
    summary.add(skipped);
    for (const Reason reason : {Reason::TimedOut, Reason::NotPdf, Reason::TimedOut}) {
        DocumentReport failed;
        failed.error = Error{reason, "a.pdf", "why"};
        failed.bytesBefore = 999999;
        summary.add(failed);
    }
    EXPECT_EQ(summary.documentsText(1200), "2 of 1,200 documents done, 1 in part, "
                                           "1 left with a blank page only, 1 left out, "
                                           "1 with warnings, 1 with losses, 3 failed "
                                           "(1 not-pdf, 2 timed-out)");
    EXPECT_EQ(summary.workText(2),
              "4 pages removed; 3.0 kB before, 2.0 kB after; 3.0 documents a second");
    EXPECT_EQ(summary.failedBut({Reason::TimedOut}), 1U);
    EXPECT_THAT(summary.documentsText(6, {Reason::TimedOut, Reason::NotPdf}),
                testing::EndsWith("(1 not-pdf, 2 timed-out), which was to be accepted"));
}

} // namespace
