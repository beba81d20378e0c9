#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace karvel;
using testing::HasSubstr;
using testing::IsEmpty;

std::string stream(const std::string& entries, std::size_t size)
{
    return entries + "|" + std::string(size, 'x');
}

const std::string image = "/Type /XObject /Subtype /Image /Width 1 /Height 50000 "
                          "/BitsPerComponent 8 /ColorSpace /DeviceGray";

/// A document of five pages, the first two of which go.
struct Case {
    const char* name;
    std::string firstPages;
    std::string otherPages;
    std::string catalog;
    const char* said; ///< null: nothing
    std::string tree = {};
    const char* before = ""; ///< its first bytes
};

const std::string showsLogo = "/Resources << /XObject << /I @logo >> >>";
const std::string showsCover = "/Resources << /XObject << /I @cover >> >>";
const std::string showsText = "/Resources << /Font << /F @font >> >>";
const std::string showsBoth = "/Resources << /XObject << /I @cover >> /Font << /F @font >> >>";

const std::vector<Case> cases = {
    {"nothing_but_pages", "", "", "", nullptr},
    {"a_light_cover_sheet_and_a_logo_on_all", showsLogo, showsLogo, "", nullptr},
    {"a_cover_sheet_with_a_picture_of_its_own", showsCover, showsLogo, "/Big @big", nullptr},
    {"a_picture_that_the_document_holds_anyway", "", "", "/Loose @cover /Big @big", nullptr},
    {"a_picture_that_the_document_holds_on", showsCover, showsLogo, "/Loose @cover",
     "2 of 5 pages went, but 99 % of the size stays, since something else holds what only they "
     "showed: images 50,"},
    {"a_font_that_the_document_holds_on", showsText, showsLogo, "/Loose @program /Big @big",
     "showed: fonts 60,"},
    {"both", showsBoth, showsLogo, "/Loose [@program @cover]", "showed: fonts 60,"},
    {"less_than_went", showsBoth, showsLogo, "/Loose @cover /Big [@big @big2]", nullptr},
    {"what_pages_inherit", "", "", "/Loose @cover", nullptr, showsCover},
    {"a_file_without_an_index", showsCover, showsLogo, "/Loose @cover", nullptr, {}, "%no index\n"},
};

/// Those of the objects that a case names, with what they name themselves.
std::vector<std::pair<std::string, std::string>> objectsOf(const Case& row)
{
    const std::vector<std::pair<std::string, std::string>> all = {
        {"logo", stream(image, 50000)},
        {"cover", stream(image, 50000)},
        {"font", "<< /Type /Font /FontDescriptor << /FontFile @program >> >>"},
        {"program", stream("/Length1 60000", 60000)},
        {"big", stream("/Type /Other", 900000)},
        {"big2", stream("/Type /Other", 900000)}};
    std::string named = row.firstPages + row.otherPages + row.catalog + row.tree;
    std::vector<std::pair<std::string, std::string>> objects;
    for (const auto& [name, text] : all) {
        if (named.find("@" + name) != std::string::npos) {
            objects.emplace_back(name, text);
            named += text.substr(0, 100);
        }
    }
    return objects;
}

class HeldBytes : public testing::TestWithParam<Case> {};

TEST_P(HeldBytes, AreExplainedWhereWhatOnlyRemovedPagesShowedStays)
{
    const Case& row = GetParam();
    const std::string pdf =
        row.before + support::Sketch{{row.firstPages, row.firstPages, row.otherPages,
                                      row.otherPages, row.otherPages},
                                     row.catalog,
                                     objectsOf(row),
                                     row.tree}
                         .built();
    auto document = support::opened(pdf);
    ASSERT_TRUE(pages::deletePages(*document, {1, 2}).has_value());
    support::savedIn(*document);
    if (row.said == nullptr) {
        EXPECT_THAT(document->warnings(), IsEmpty());
    } else {
        EXPECT_THAT(document->warnings(), testing::ElementsAre(HasSubstr(row.said)));
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, HeldBytes, testing::ValuesIn(cases),
                         [](const auto& info) { return info.param.name; });

} // namespace
