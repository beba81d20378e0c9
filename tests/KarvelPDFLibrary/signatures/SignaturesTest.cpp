#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "tests/support/Inspect.h"
#include "tests/support/Sketch.h"

#include <gtest/gtest.h>

namespace {

using namespace karvel;

TEST(SignatureFields, AreSignedWhenTheyHaveAValue)
{
    const support::Sketch sketch = {{""},
                                    "/AcroForm << /Fields [@text @unsigned @group @empty] >>",
                                    {{"text", "<< /FT /Tx /T (a) /V (text) >>"},
                                     {"unsigned", "<< /FT /Sig /T (b) >>"},
                                     {"group", "<< /FT /Sig /T (c) /V @value /Kids [@below] >>"},
                                     {"below", "<< /T (d) /Parent @group >>"},
                                     {"empty", "<< /FT /Sig /T (e) /V null >>"},
                                     {"value", "<< /Type /Sig /Contents <00> >>"}}};
    auto document = support::opened(sketch.built());
    EXPECT_EQ(signatures::count(*document), 3);
    EXPECT_FALSE(signatures::isSigned(*document, 1).value());
    EXPECT_TRUE(signatures::isSigned(*document, 2).value());
    EXPECT_FALSE(signatures::isSigned(*document, 3).value());
    EXPECT_EQ(signatures::fieldOf(*document, 2).value(), 3);
    for (const int none : {0, 4, -1}) {
        EXPECT_EQ(signatures::isSigned(*document, none).error().code, ErrorCode::NotFound) << none;
    }
}

} // namespace
