#pragma once

#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/SameDocument.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// What the tests of the deletion modules share.
namespace support {

/// A document without some pages (given from the highest down), saved in both ways, which must say
/// the same and be valid.
inline std::string withoutPages(const std::string& pdf, const std::vector<int>& pages)
{
    std::string saved[2];
    for (const auto way : {karvel::saving::Way::CopyUnchanged, karvel::saving::Way::Rewrite}) {
        auto document = opened(pdf);
        for (const int page : pages) {
            EXPECT_TRUE(karvel::pages::deletePages(*document, {page, 1}).has_value());
        }
        saved[static_cast<int>(way)] = savedIn(*document, way);
    }
    EXPECT_EQ(firstDifference(saved[0], saved[1]), "");
    EXPECT_EQ(problems(saved[0]), "");
    return saved[0];
}

/// A document from which pages were removed comes out the same when it is not fit for an index.
inline void expectSameWithoutIndex(const std::string& pdf, const std::vector<int>& pages,
                                   const std::string& saved)
{
    const std::string unfit = " " + pdf;
    EXPECT_NE(opened(pdf)->index(), nullptr);
    EXPECT_EQ(opened(unfit)->index(), nullptr);
    EXPECT_EQ(firstDifference(saved, withoutPages(unfit, pages)), "");
}

} // namespace support
