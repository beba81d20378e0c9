#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

/// Five pages that share an image; there is more that no page takes along.
std::string sharingDocument(const std::string& before)
{
    const std::string page = "/Resources << /XObject << /I @image /F @form >> >>";
    return before +
           support::Sketch{
               {page, page, page, page, page},
               "/Font @program /AF [@file] /Loose @loose",
               {{"image", "/Type /XObject /Subtype /Image /Width 1 /Height 50000 /BitsPerComponent "
                          "8 /ColorSpace /DeviceGray|" +
                              std::string(50000, 'i')},
                {"form", "/Subtype /Form /BBox [0 0 9 9]|" + std::string(30000, ' ')},
                {"program", "/Length1 40000|" + std::string(40000, 'f')},
                {"file", "<< /Type /Filespec /F (f) /EF << /F @data >> >>"},
                {"data", "/Type /EmbeddedFile|" + std::string(20000, 'a')},
                {"loose", "/Type /Metadata /Subtype /XML|" + std::string(10000, 'x')}}}
               .built();
}

std::vector<std::string> warningsWithout(int pages, const std::string& pdf)
{
    auto document = support::opened(pdf);
    EXPECT_TRUE(pages::deletePages(*document, {1, pages}).has_value());
    support::savedIn(*document);
    return document->warnings();
}

TEST(HeldBytes, AreExplainedByKindWhenADocumentHardlyShrinks)
{
    for (const char* before : {"", "%no index\n"}) {
        SCOPED_TRACE(before);
        EXPECT_THAT(warningsWithout(2, sharingDocument(before)),
                    Contains(AllOf(HasSubstr("2 of 5 pages went, but 99 % of the size is held by "
                                             "images 50,"),
                                   HasSubstr(" bytes, fonts 40,"), HasSubstr(", content 30,"),
                                   HasSubstr(", attachments 20,"), HasSubstr(", other 1"))));
    }
}

TEST(HeldBytes, AreNoMatterWhenTheSizeGoesWithThePages)
{
    EXPECT_THAT(warningsWithout(2, support::documentOfPages(5)), IsEmpty());
}

} // namespace
