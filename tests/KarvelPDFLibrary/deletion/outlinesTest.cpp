#include "DeletionCase.h"
#include "tests/support/Sketch.h"

#include <random>

namespace {

using namespace karvel;
using support::PagedDocument;
using support::PdfBuilder;

/// An outline entry: its title, whether it is open, its target as PDF text with %1 to %4 for pages
/// and %array1 to %array4 for destinations that are objects, and its level below the outline.
struct Line {
    std::string title;
    int level;
    std::string target;
    bool open = true;
};

/// A text with what "%1" and "%array1" and so on stand for.
std::string withReferences(PagedDocument& file, std::string text)
{
    const auto put = [&](const std::string& mark, int object) {
        for (std::size_t at; (at = text.find(mark)) != std::string::npos;) {
            text.replace(at, mark.size(), PdfBuilder::reference(object));
        }
    };
    for (std::size_t page = 0; page < file.pages.size(); ++page) {
        const std::string mark = std::to_string(page + 1);
        put("%" + mark, file.pages[page]);
        if (text.find("%array" + mark) != std::string::npos) {
            put("%array" + mark, file.builder.add(withReferences(file, "[%" + mark + " /Fit]")));
        }
    }
    return text;
}

/// Adds an outline to a document; the entries refer to each other by numbers given in advance.
void addOutline(PagedDocument& file, const std::vector<Line>& lines)
{
    PdfBuilder& builder = file.builder;
    const int root = builder.reserve();
    std::vector<int> numbers;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        numbers.push_back(builder.reserve());
    }
    std::vector<std::string> links(lines.size() + 1); // the last is the root's
    std::vector<int> counts(lines.size() + 1, 0);
    const auto parentOf = [&](std::size_t i) {
        std::size_t parent = i;
        while (parent-- > 0) {
            if (lines[parent].level < lines[i].level) {
                return parent;
            }
        }
        return lines.size();
    };
    std::vector<std::size_t> lastChild(lines.size() + 1, lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t parent = parentOf(i);
        links[i] +=
            " /Parent " + PdfBuilder::reference(parent == lines.size() ? root : numbers[parent]);
        if (lastChild[parent] == lines.size()) {
            links[parent] += " /First " + PdfBuilder::reference(numbers[i]);
        } else {
            links[lastChild[parent]] += " /Next " + PdfBuilder::reference(numbers[i]);
            links[i] += " /Prev " + PdfBuilder::reference(numbers[lastChild[parent]]);
        }
        lastChild[parent] = i;
    }
    for (std::size_t i = lines.size(); i-- > 0;) {
        counts[parentOf(i)] += 1 + (lines[i].open ? counts[i] : 0);
    }
    for (std::size_t i = 0; i <= lines.size(); ++i) {
        if (lastChild[i] != lines.size()) {
            const bool open = i == lines.size() || lines[i].open;
            links[i] += " /Last " + PdfBuilder::reference(numbers[lastChild[i]]) + " /Count " +
                        std::to_string(open ? counts[i] : -counts[i]);
        }
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string target = withReferences(file, lines[i].target);
        builder.set(numbers[i], "<< /Title (" + lines[i].title + ") " + target + links[i] + " >>");
    }
    builder.set(root, "<< /Type /Outlines" + links[lines.size()] + " >>");
    file.catalogEntries += " /PageMode /UseOutlines /Outlines " + PdfBuilder::reference(root);
}

/// The outline as text: "Title(count)" with "-" for each level and "!" for an entry with a target.
std::vector<std::string> told(const std::string& pdf)
{
    auto document = support::opened(pdf);
    std::vector<std::string> lines;
    struct Place {
        QPDFObjectHandle entry;
        std::string indent;
    };
    std::vector<Place> open = {{document->catalog().getKey("/Outlines").getKey("/First"), ""}};
    while (!open.empty()) {
        auto [entry, indent] = open.back();
        open.pop_back();
        if (!entry.isDictionary()) {
            continue;
        }
        QPDFObjectHandle count = entry.getKey("/Count");
        lines.push_back(indent + entry.getKey("/Title").getUTF8Value() +
                        (entry.hasKey("/Dest") || entry.hasKey("/A") ? "!" : "") +
                        (count.isInteger() ? "(" + std::to_string(count.getIntValue()) + ")" : ""));
        QPDFObjectHandle next = entry.getKey("/Next");
        EXPECT_TRUE(next.isNull() || next.getKey("/Prev").getObjGen() == entry.getObjGen());
        QPDFObjectHandle parent = entry.getKey("/Parent");
        EXPECT_TRUE(!next.isNull() || parent.getKey("/Last").getObjGen() == entry.getObjGen());
        open.push_back({next, indent});
        open.push_back({entry.getKey("/First"), indent + "-"});
    }
    return lines;
}

struct Case {
    const char* name;
    std::vector<Line> lines;
    std::vector<int> deleted;
    std::vector<std::string> expected;
};

class Outlines : public testing::TestWithParam<Case> {};

TEST_P(Outlines, KeepWhatStillLeadsSomewhere)
{
    PagedDocument file(4);
    addOutline(file, GetParam().lines);
    file.catalogEntries +=
        withReferences(file, "/Names << /Dests << /Names [(one) [%1 /Fit] (two) [%2 /Fit]] >> >>");
    const std::string pdf = file.build();
    const std::string left = support::withoutPages(pdf, GetParam().deleted);
    EXPECT_EQ(told(left), GetParam().expected);
    support::expectSameWithoutIndex(pdf, GetParam().deleted, left);
}

INSTANTIATE_TEST_SUITE_P(
    Deletion, Outlines,
    testing::Values(
        Case{"entries_of_removed_pages_go",
             {{"One", 0, "/Dest [%1 /Fit]"},
              {"Two", 0, "/Dest [%2 /Fit]"},
              {"Three", 0, "/A << /S /GoTo /D [%3 /Fit] >>"}},
             {2},
             {"One!", "Three!"}},
        Case{"a_heading_with_children_stays_without_a_target",
             {{"Chapter", 0, "/Dest [%2 /Fit]"},
              {"Section", 1, "/Dest [%3 /Fit]"},
              {"Other", 1, "/Dest [%2 /Fit]"}},
             {2},
             {"Chapter(1)", "-Section!"}},
        Case{"a_heading_without_children_goes_with_them",
             {{"Chapter", 0, "/Dest [%2 /Fit]"},
              {"Section", 1, "/Dest [%2 /Fit]"},
              {"Next", 0, "/Dest [%3 /Fit]"}},
             {2},
             {"Next!"}},
        Case{"entries_without_target_or_with_another_action_stay",
             {{"Plain", 0, ""},
              {"Web", 0, "/A << /S /URI /URI (http://example.org) >>"},
              {"Script", 0, "/A << /S /JavaScript /JS (1) >>"},
              {"Two", 0, "/Dest [%2 /Fit]"}},
             {2},
             {"Plain", "Web!", "Script!"}},
        Case{"a_closed_entry_stays_closed",
             {{"Closed", 0, "/Dest [%1 /Fit]", false},
              {"A", 1, "/Dest [%2 /Fit]"},
              {"B", 1, "/Dest [%3 /Fit]"},
              {"Open", 0, "/Dest [%1 /Fit]"},
              {"C", 1, "/Dest [%2 /Fit]"},
              {"D", 1, "/Dest [%3 /Fit]"}},
             {2},
             {"Closed!(-1)", "-B!", "Open!(1)", "-D!"}},
        Case{"counts_above_are_right",
             {{"A", 0, "/Dest [%1 /Fit]"},
              {"B", 1, "/Dest [%1 /Fit]"},
              {"C", 2, "/Dest [%2 /Fit]"},
              {"D", 2, "/Dest [%3 /Fit]"}},
             {2},
             {"A!(2)", "-B!(1)", "--D!"}},
        Case{"an_action_after_the_lost_one_moves_up",
             {{"Both", 0,
               "/A << /S /GoTo /D [%2 /Fit] /Next << /S /URI /URI (http://example.org) >> >>"},
              {"One", 0, "/Dest [%1 /Fit]"}},
             {2},
             {"Both!", "One!"}},
        Case{"a_page_named_by_its_number_is_followed",
             {{"Old1", 0, "/Dest [0 /Fit]"},
              {"Old2", 0, "/Dest [1 /Fit]"},
              {"Old3", 0, "/Dest [2 /XYZ 0 0 0]"}},
             {2},
             {"Old1!", "Old3!"}},
        Case{"destinations_by_name_go_with_what_they_name",
             {{"Kept", 0, "/Dest (one)"},
              {"Hex", 0, "/Dest <74776f>"},
              {"Chapter", 0, "/A << /S /GoTo /D (two) >>"},
              {"Under", 1, "/A << /S /GoTo /D (one) >>"}},
             {2},
             {"Kept!", "Chapter(1)", "-Under!"}},
        Case{"what_is_unusual_is_read_as_well",
             {{"Indirect", 0, "/Dest %array2"},
              {"Kept", 0, "/Dest %array1"},
              {"Both", 0, "/Dest [%2 /Fit] /A << /S /GoTo /D [%2 /Fit] >>"},
              {"Null", 0, "/Dest null /A << /S /GoTo /D [%2 /Fit] >>"},
              {"Nowhere", 0, "/Dest [999 0 R /Fit]"}},
             {2},
             {"Kept!", "Nowhere!"}},
        Case{"nothing_is_left",
             {{"Two", 0, "/Dest [%2 /Fit]"}, {"Under", 1, "/Dest [%2 /Fit]"}},
             {2},
             {}}),
    [](const auto& info) { return info.param.name; });

/// Any outline comes out the same by its entries' texts and when every entry is built.
TEST(Outlines, AreTheSameHoweverTheyAreRead)
{
    const std::vector<std::string> targets = {"",
                                              "/Dest [%1 /Fit]",
                                              "/Dest [%2 /Fit]",
                                              "/Dest[ %3 /XYZ 0 0 0 ]/SE %1",
                                              "/Dest %array2",
                                              "/Dest (two)",
                                              "/Dest /old",
                                              "/Dest [1 /Fit]",
                                              "/A << /S /GoTo /D [%2 /Fit] >>",
                                              "/A <</S/GoTo/D(one)>>",
                                              "/A << /S /GoTo /D [%2 /Fit] /Next << /S /GoTo "
                                              "/D [%3 /Fit] >> >>",
                                              "/A << /S /URI /URI (x) >> /SE %2"};
    std::mt19937 random(7);
    for (int round = 0; round < 25; ++round) {
        PagedDocument file(4);
        std::vector<Line> lines;
        for (std::uint32_t i = 0; i < 30; ++i) {
            const int deepest = lines.empty() ? 0 : lines.back().level + 1;
            lines.push_back({"E" + std::to_string(i),
                             static_cast<int>(random() % static_cast<std::uint32_t>(deepest + 1)),
                             targets[random() % targets.size()], random() % 2 == 0});
        }
        addOutline(file, lines);
        file.catalogEntries += withReferences(
            file, "/Names << /Dests << /Names [(one) [%1 /Fit] (two) [%2 /Fit]] >> >> "
                  "/Dests << /old [%2 /Fit] >>");
        const std::vector<int> deleted =
            round % 2 == 0 ? std::vector<int>{2} : std::vector<int>{4, 1};
        const std::string pdf = file.build();
        const std::string left = support::withoutPages(pdf, deleted);
        told(left); // looks at how entries hang together
        support::expectSameWithoutIndex(pdf, deleted, left);
    }
}

TEST(Outlines, AreNotTouchedWhenNothingInThemWent)
{
    PagedDocument file(4);
    addOutline(file, {{"One", 0, "/Dest [%1 /Fit]"}, {"Under", 1, "/Dest [%3 /Fit]"}});
    auto document = support::opened(file.build());
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    ASSERT_TRUE(deletion::synchronize(*document).has_value());
    QPDFObjectHandle outlines = document->catalog().getKey("/Outlines");
    EXPECT_EQ(document->changes().objects().count(outlines.getObjectID()), 0U);
    EXPECT_EQ(document->changes().objects().count(outlines.getKey("/First").getObjectID()), 0U);
}

TEST(Outlines, AreChangedByTheirTextsWhereTheseTellAll)
{
    PagedDocument file(4);
    addOutline(file, {{"One", 0, "/Dest [%1 /Fit]"}, {"Two", 0, "/Dest [%2 /Fit]"}});
    auto document = support::opened(file.build());
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    ASSERT_TRUE(deletion::synchronize(*document, deletion::Degree::Recorded).has_value());
    QPDFObjectHandle outlines = document->catalog().getKey("/Outlines");
    for (const QPDFObjectHandle& changed : {outlines, outlines.getKey("/First")}) {
        const std::string* text = document->changes().text(changed.getObjectID());
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->find("/Next"), std::string::npos);
    }
}

TEST(Outlines, LoseTheirPageModeWithTheirLastEntry)
{
    PagedDocument file(2);
    addOutline(file, {{"Two", 0, "/Dest [%2 /Fit]"}});
    auto document = support::opened(support::withoutPages(file.build(), {2}));
    EXPECT_FALSE(document->catalog().hasKey("/Outlines"));
    EXPECT_FALSE(document->catalog().hasKey("/PageMode"));
}

TEST(Outlines, AreReadWhereTheCatalogHoldsThem)
{
    PagedDocument file(3);
    const int one = file.builder.reserve();
    const int two = file.builder.reserve();
    const std::string toOne = PdfBuilder::reference(one);
    const std::string toTwo = PdfBuilder::reference(two);
    file.builder.set(one, withReferences(file, "<< /Title (One) /Dest [%1 /Fit] /Next " + toTwo) +
                              " >>");
    file.builder.set(two, withReferences(file, "<< /Title (Two) /Dest [%2 /Fit] /Prev " + toOne) +
                              " >>");
    file.catalogEntries = "/Outlines << /First " + toOne + " /Last " + toTwo + " /Count 2 >>";
    const std::string left = support::withoutPages(file.build(), {2});
    support::expectSameWithoutIndex(file.build(), {2}, left);
    auto document = support::opened(left);
    QPDFObjectHandle outlines = document->catalog().getKey("/Outlines");
    EXPECT_EQ(outlines.getKey("/Count").unparse(), "1");
    EXPECT_EQ(outlines.getKey("/Last").unparse(), toOne);
    EXPECT_FALSE(outlines.getKey("/First").hasKey("/Next"));
    EXPECT_EQ(support::everythingIn(left).find("Two"), std::string::npos);
}

TEST(Outlines, OfAnyShapeAreRead)
{
    // A ring of entries, one of which is its own child, and 3,000 levels of depth.
    PagedDocument file(3);
    std::vector<Line> lines;
    for (int level = 0; level < 3000; ++level) {
        lines.push_back({"L" + std::to_string(level), level,
                         level % 2 == 0 ? "/Dest [%1 /Fit]" : "/Dest [%2 /Fit]"});
    }
    addOutline(file, lines);
    std::string pdf = file.build();
    auto document = support::opened(support::withoutPages(pdf, {2}));
    EXPECT_TRUE(document->catalog().hasKey("/Outlines"));

    PagedDocument ring(3);
    const int root = ring.builder.reserve();
    const int a = ring.builder.reserve();
    const int b = ring.builder.reserve();
    const auto ref = [](int number) { return PdfBuilder::reference(number); };
    ring.builder.set(root, "<< /First " + ref(a) + " /Last " + ref(b) + " /Count 2 >>");
    ring.builder.set(a, "<< /Title (A) /Dest [" + ref(ring.pages[1]) + " /Fit] /Parent " +
                            ref(root) + " /Next " + ref(b) + " /First " + ref(a) + " >>");
    ring.builder.set(b, "<< /Title (B) /Dest [" + ref(ring.pages[0]) + " /Fit] /Parent " +
                            ref(root) + " /Next " + ref(a) + " >>");
    ring.catalogEntries = "/Outlines " + ref(root);
    EXPECT_EQ(told(support::withoutPages(ring.build(), {2})), std::vector<std::string>{"B!"});
}

} // namespace
