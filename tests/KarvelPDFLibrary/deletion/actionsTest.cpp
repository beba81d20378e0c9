#include "DeletionCase.h"

namespace {

using namespace karvel;
using support::PagedDocument;
using support::PdfBuilder;

/// Fills in %1 to %4 for pages and %A to %C for extra objects.
std::string filledIn(std::string text, const PagedDocument& file, const std::vector<int>& extra)
{
    for (std::size_t at = 0; (at = text.find('%', at)) != std::string::npos; ++at) {
        const char mark = text[at + 1];
        const int number = mark >= 'A' ? extra.at(static_cast<std::size_t>(mark - 'A'))
                                       : file.pages.at(static_cast<std::size_t>(mark - '1'));
        text.replace(at, 2, PdfBuilder::reference(number));
    }
    return text;
}

/// A four-page document with entries for page 1 and the catalog, and objects %A, %B, ...
std::string documentWith(const std::string& pageEntries, const std::string& catalogEntries,
                         const std::vector<std::string>& extraObjects)
{
    PagedDocument file(4);
    std::vector<int> extra;
    for (std::size_t i = 0; i < extraObjects.size(); ++i) {
        extra.push_back(file.builder.reserve());
    }
    for (std::size_t i = 0; i < extraObjects.size(); ++i) {
        file.builder.set(extra[i], filledIn(extraObjects[i], file, extra));
    }
    file.builder.set(file.pages[0], "<< /Type /Page /MediaBox [0 0 9 9] /Parent " +
                                        PdfBuilder::reference(file.root) + " " +
                                        filledIn(pageEntries, file, extra) + " >>");
    file.catalogEntries = filledIn(catalogEntries, file, extra);
    return file.build();
}

constexpr const char* link = "/Type /Annot /Subtype /Link /Rect [0 0 5 5] ";

struct Case {
    const char* name;
    std::string pageEntries;
    std::string catalogEntries;
    std::vector<std::string> extra;

    /// Where to look, as keys and indices from the first page ("P") or the catalog ("C"), and what
    /// is found there: the name of an action, the number of a page, or "gone".
    std::vector<std::pair<std::vector<std::string>, std::string>> expected;
};

std::string lookedUp(Document& document, const std::vector<std::string>& path)
{
    QPDFObjectHandle at = path.front() == "P" ? document.page(1) : document.catalog();
    for (std::size_t i = 1; i < path.size(); ++i) {
        if (path[i][0] == '/') {
            at = at.isDictionary() ? at.getKey(path[i]) : QPDFObjectHandle::newNull();
        } else {
            const int index = std::stoi(path[i]);
            at = at.isArray() && index < at.getArrayNItems() ? at.getArrayItem(index)
                                                             : QPDFObjectHandle::newNull();
        }
    }
    if (at.isNull()) {
        return "gone";
    }
    if (at.isDictionaryOfType("/Page")) {
        return std::to_string(document.pageOfObject(at.getObjectID()));
    }
    if (at.isDictionary() && at.hasKey("/S")) {
        return at.getKey("/S").getName();
    }
    return at.isDictionary() ? "dictionary" : at.isArray() ? "array" : at.unparse();
}

class Actions : public testing::TestWithParam<Case> {};

TEST_P(Actions, LoseThePartThatLeadsToARemovedPage)
{
    const auto& [name, pageEntries, catalogEntries, extra, expected] = GetParam();
    // Page 2 goes, so that page 3 becomes page 2.
    auto document = support::opened(
        support::withoutPages(documentWith(pageEntries, catalogEntries, extra), {2}));
    for (const auto& [path, value] : expected) {
        EXPECT_EQ(lookedUp(*document, path), value) << testing::PrintToString(path);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Deletion, Actions,
    testing::Values(
        Case{"link_to_a_page_that_stays",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link + "/Dest [%3 /Fit] >>"},
             {{{"P", "/Annots", "0", "/Dest", "0"}, "2"}}},
        Case{"link_to_a_removed_page",
             "/Annots [%A %B]",
             "",
             {std::string("<< ") + link + "/Dest [%2 /Fit] >>",
              std::string("<< ") + link + "/Dest [%4 /Fit] >>"},
             {{{"P", "/Annots", "0", "/Dest", "0"}, "3"}, {{"P", "/Annots", "1"}, "gone"}}},
        Case{"link_without_a_number",
             std::string("/Annots [<< ") + link + "/Dest [%2 /Fit] >> << " + link +
                 "/Dest [%3 /Fit] >>]",
             "",
             {},
             {{{"P", "/Annots", "0", "/Dest", "0"}, "2"}, {{"P", "/Annots", "1"}, "gone"}}},
        Case{"annotations_in_an_array_object",
             "/Annots %A",
             "",
             {std::string("[<< ") + link + "/A << /S /GoTo /D [%2 /Fit] >> >> %B]",
              std::string("<< ") + link + "/Dest [%2 /Fit] >>"},
             {{{"P", "/Annots", "0"}, "gone"}}},
        Case{"everything_indirect",
             "/Annots %A",
             "",
             {"[%B]", std::string("<< ") + link + "/A %C >>", "<< /S /GoTo /D %D >>", "[%2 /Fit]"},
             {{{"P", "/Annots", "0"}, "gone"}}},
        Case{"chain_that_begins_with_the_lost_page",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link +
              "/A << /S /GoTo /D [%2 /Fit] /Next << /S /URI /URI (x) >> >> >>"},
             {{{"P", "/Annots", "0", "/A"}, "/URI"}}},
        Case{"chain_that_ends_with_the_lost_page",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link + "/A << /S /URI /URI (x) /Next %B >> >>",
              "<< /S /GoTo /D [%2 /Fit] >>"},
             {{{"P", "/Annots", "0", "/A"}, "/URI"},
              {{"P", "/Annots", "0", "/A", "/Next"}, "gone"}}},
        Case{"chain_with_the_lost_page_in_the_middle",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link +
              "/A << /S /Named /N /Print /Next << /S /GoTo /D [%2 /Fit] /Next << /S /URI /URI (x) "
              ">> >> >> >>"},
             {{{"P", "/Annots", "0", "/A"}, "/Named"},
              {{"P", "/Annots", "0", "/A", "/Next"}, "/URI"}}},
        Case{"several_next_actions",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link +
              "/A << /S /GoTo /D [%2 /Fit] /Next [<< /S /URI /URI (x) >> << /S /GoTo /D [%2 /Fit] "
              ">> << /S /GoTo /D [%3 /Fit] >>] >> >>"},
             {{{"P", "/Annots", "0", "/A"}, "/URI"},
              {{"P", "/Annots", "0", "/A", "/Next"}, "/GoTo"},
              {{"P", "/Annots", "0", "/A", "/Next", "/D", "0"}, "2"}}},
        Case{"chain_in_a_ring",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link + "/A %B >>", "<< /S /GoTo /D [%2 /Fit] /Next %C >>",
              "<< /S /URI /URI (x) /Next %B >>"},
             {{{"P", "/Annots", "0", "/A"}, "/URI"},
              {{"P", "/Annots", "0", "/A", "/Next"}, "gone"}}},
        Case{"actions_of_a_page",
             "/AA << /O << /S /GoTo /D [%2 /Fit] >> /C << /S /GoTo /D [%3 /Fit] >> >>",
             "",
             {},
             {{{"P", "/AA", "/O"}, "gone"}, {{"P", "/AA", "/C", "/D", "0"}, "2"}}},
        Case{"last_action_of_a_page",
             "/AA %A",
             "",
             {"<< /O << /S /GoTo /D [%2 /Fit] >> >>"},
             {{{"P", "/AA"}, "gone"}}},
        Case{"button_keeps_its_other_actions",
             "/Annots [%A]",
             "",
             {"<< /Type /Annot /Subtype /Screen /Rect [0 0 5 5] /A << /S /GoTo /D [%2 /Fit] >> /AA "
              "<< /E << /S /URI /URI (x) >> >> >>"},
             {{{"P", "/Annots", "0", "/A"}, "gone"}, {{"P", "/Annots", "0", "/AA", "/E"}, "/URI"}}},
        Case{"open_action_as_destination",
             "",
             "/OpenAction [%2 /Fit]",
             {},
             {{{"C", "/OpenAction"}, "gone"}}},
        Case{"open_action_as_action",
             "",
             "/OpenAction %A",
             {"<< /S /GoTo /D [%2 /Fit] /Next << /S /JavaScript /JS (1) >> >>"},
             {{{"C", "/OpenAction"}, "/JavaScript"}}},
        Case{"open_action_that_stays",
             "",
             "/OpenAction [%3 /XYZ null null 0]",
             {},
             {{{"C", "/OpenAction", "0"}, "2"}}},
        Case{"link_into_another_file_stays_as_it_is",
             "/Annots [%A]",
             "",
             {std::string("<< ") + link + "/A << /S /GoToR /F (b.pdf) /D [1 /Fit] >> >>"},
             {{{"P", "/Annots", "0", "/A", "/D", "0"}, "1"}}},
        Case{"link_to_a_page_by_its_number",
             "/Annots [%A %B]",
             "",
             {std::string("<< ") + link + "/Dest [2 /Fit] >>",
              std::string("<< ") + link + "/Dest [1 /Fit] >>"},
             {{{"P", "/Annots", "0", "/Dest", "0"}, "1"}, {{"P", "/Annots", "1"}, "gone"}}},
        Case{"name_in_the_old_dictionary",
             "/Annots [%A %B]",
             "/Dests << /Gone [%2 /Fit] /Stays << /D [%3 /Fit] >> >>",
             {std::string("<< ") + link + "/Dest /Gone >>",
              std::string("<< ") + link + "/A << /S /GoTo /D /Stays >> >>"},
             {{{"C", "/Dests", "/Gone"}, "gone"},
              {{"C", "/Dests", "/Stays", "/D", "0"}, "2"},
              {{"P", "/Annots", "0", "/A", "/D"}, "/Stays"},
              {{"P", "/Annots", "1"}, "gone"}}},
        Case{"name_in_the_tree",
             "/Annots [%A %B]",
             "/Names << /Dests << /Names [(gone) [%2 /Fit] (stays) << /D [%3 /Fit] >>] >> >>",
             {std::string("<< ") + link + "/Dest (gone) >>",
              std::string("<< ") + link + "/A << /S /GoTo /D (stays) >> >>"},
             {{{"C", "/Names", "/Dests", "/Names", "0"}, "(stays)"},
              {{"P", "/Annots", "0", "/A", "/D"}, "(stays)"},
              {{"P", "/Annots", "1"}, "gone"}}},
        Case{"name_in_an_indirect_action",
             "/Annots [%A %B]",
             "/Names << /Dests << /Names [(gone) [%2 /Fit]] >> >>",
             {std::string("<< ") + link + "/A << /S /URI /URI (x) /Next %C >> >>",
              std::string("<< ") + link + "/A %C >>", "<< /S /GoTo /D <676F6E65> >>"},
             {{{"P", "/Annots", "0", "/A"}, "/URI"},
              {{"P", "/Annots", "0", "/A", "/Next"}, "gone"},
              {{"P", "/Annots", "1"}, "gone"}}},
        Case{"escaped_name",
             "/Annots [%A]",
             "/Names << /Dests << /Names [(go\\156e) [%2 /Fit]] >> >>",
             {std::string("<< ") + link + "/Dest (gon\\145) >>"},
             {{{"P", "/Annots", "0"}, "gone"}}},
        Case{"name_of_an_indirect_destination",
             "/Annots [%A]",
             "/Names << /Dests << /Names [(gone) %B] >> >>",
             {std::string("<< ") + link + "/Dest (gone) >>", "<< /D %C >>", "[%2 /Fit]"},
             {{{"C", "/Names", "/Dests"}, "gone"}, {{"P", "/Annots", "0"}, "gone"}}}),
    [](const auto& info) { return info.param.name; });

/// A name tree of three leaves: the middle one loses everything, the others part.
TEST(NamedDestinations, LeaveAValidTree)
{
    const std::string pdf =
        documentWith("", "/Names << /Dests %A >>",
                     {"<< /Kids [%B %C %D] >>",
                      "<< /Limits [(a) (c)] /Names [(a) [%1 /Fit] (b) [%3 /Fit] (c) [%2 /Fit]] >>",
                      "<< /Limits [(d) (e)] /Names [(d) [%2 /Fit] (e) [%2 /Fit]] >>",
                      "<< /Limits [(f) (g)] /Kids [%E] >>",
                      "<< /Limits [(f) (g)] /Names [(f) [%2 /Fit] (g) [%4 /Fit]] >>"});
    auto document = support::opened(support::withoutPages(pdf, {2}));
    QPDFObjectHandle kids = document->catalog().getKey("/Names").getKey("/Dests").getKey("/Kids");
    ASSERT_EQ(kids.getArrayNItems(), 2);
    EXPECT_EQ(kids.getArrayItem(0).getKey("/Limits").unparse(), "[ (a) (b) ]");
    EXPECT_EQ(kids.getArrayItem(1).getKey("/Limits").unparse(), "[ (g) (g) ]");
    EXPECT_EQ(kids.getArrayItem(1).getKey("/Kids").getArrayItem(0).getKey("/Limits").unparse(),
              "[ (g) (g) ]");
}

} // namespace
