#include "DeletionCase.h"
#include "tests/support/Sketch.h"

#include <random>

namespace {

using namespace karvel;
using support::Sketch;

/// An outline entry: its title, its level below the outline, its target as a sketch has it, where
/// "@array1" to "@array4" are destinations that are objects, and whether it is open.
struct Line {
    std::string title;
    int level;
    std::string target;
    bool open = true;
};

/// Pages with an outline; the entries are the objects "e0", "e1" and so on.
Sketch withOutline(int pages, const std::vector<Line>& lines, const std::string& catalog = {})
{
    Sketch sketch;
    sketch.catalog = "/PageMode /UseOutlines /Outlines @outlines " + catalog;
    for (int page = 1; page <= pages; ++page) {
        const std::string number = std::to_string(page);
        sketch.pages.emplace_back();
        sketch.objects.emplace_back("array" + number, "[@p" + number + " /Fit]");
    }
    const std::size_t root = lines.size();
    const auto name = [&](std::size_t i) {
        return i == root ? "outlines" : "e" + std::to_string(i);
    };
    const auto parentOf = [&](std::size_t i) {
        for (std::size_t parent = i; parent-- > 0;) {
            if (lines[parent].level < lines[i].level) {
                return parent;
            }
        }
        return root;
    };
    std::vector<std::string> links(root + 1);
    std::vector<int> counts(root + 1, 0);
    std::vector<std::size_t> lastChild(root + 1, root);
    for (std::size_t i = 0; i < root; ++i) {
        const std::size_t parent = parentOf(i);
        links[i] += " /Parent @" + name(parent);
        if (lastChild[parent] == root) {
            links[parent] += " /First @" + name(i);
        } else {
            links[lastChild[parent]] += " /Next @" + name(i);
            links[i] += " /Prev @" + name(lastChild[parent]);
        }
        lastChild[parent] = i;
    }
    for (std::size_t i = root; i-- > 0;) {
        counts[parentOf(i)] += 1 + (lines[i].open ? counts[i] : 0);
    }
    for (std::size_t i = 0; i <= root; ++i) {
        if (lastChild[i] != root) {
            const bool open = i == root || lines[i].open;
            links[i] += " /Last @" + name(lastChild[i]) + " /Count " +
                        std::to_string(open ? counts[i] : -counts[i]);
        }
        const std::string own =
            i == root ? "/Type /Outlines" : "/Title (" + lines[i].title + ") " + lines[i].target;
        sketch.objects.emplace_back(name(i), "<< " + own + links[i] + " >>");
    }
    return sketch;
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
    std::vector<std::string> expected; // when page 2 of 4 has gone
};

const Case cases[] = {
    {"entries of removed pages go",
     {{"One", 0, "/Dest [@p1 /Fit]"},
      {"Two", 0, "/Dest [@p2 /Fit]"},
      {"Three", 0, "/A << /S /GoTo /D [@p3 /Fit] >>"}},
     {"One!", "Three!"}},
    {"a heading with children stays without a target",
     {{"Chapter", 0, "/Dest [@p2 /Fit]"},
      {"Section", 1, "/Dest [@p3 /Fit]"},
      {"Other", 1, "/Dest [@p2 /Fit]"}},
     {"Chapter(1)", "-Section!"}},
    {"a heading without children goes with them",
     {{"Chapter", 0, "/Dest [@p2 /Fit]"},
      {"Section", 1, "/Dest [@p2 /Fit]"},
      {"Next", 0, "/Dest [@p3 /Fit]"}},
     {"Next!"}},
    {"entries without target or with another action stay",
     {{"Plain", 0, ""},
      {"Web", 0, "/A << /S /URI /URI (http://example.org) >>"},
      {"Script", 0, "/A << /S /JavaScript /JS (1) >>"},
      {"Two", 0, "/Dest [@p2 /Fit]"}},
     {"Plain", "Web!", "Script!"}},
    {"a closed entry stays closed",
     {{"Closed", 0, "/Dest [@p1 /Fit]", false},
      {"A", 1, "/Dest [@p2 /Fit]"},
      {"B", 1, "/Dest [@p3 /Fit]"},
      {"Open", 0, "/Dest [@p1 /Fit]"},
      {"C", 1, "/Dest [@p2 /Fit]"},
      {"D", 1, "/Dest [@p3 /Fit]"}},
     {"Closed!(-1)", "-B!", "Open!(1)", "-D!"}},
    {"counts above are right",
     {{"A", 0, "/Dest [@p1 /Fit]"},
      {"B", 1, "/Dest [@p1 /Fit]"},
      {"C", 2, "/Dest [@p2 /Fit]"},
      {"D", 2, "/Dest [@p3 /Fit]"}},
     {"A!(2)", "-B!(1)", "--D!"}},
    {"an action after the lost one moves up",
     {{"Both", 0, "/A << /S /GoTo /D [@p2 /Fit] /Next << /S /URI /URI (http://example.org) >> >>"},
      {"One", 0, "/Dest [@p1 /Fit]"}},
     {"Both!", "One!"}},
    {"a page named by its number is followed",
     {{"Old1", 0, "/Dest [0 /Fit]"},
      {"Old2", 0, "/Dest [1 /Fit]"},
      {"Old3", 0, "/Dest [2 /XYZ 0 0 0]"}},
     {"Old1!", "Old3!"}},
    {"destinations by name go with what they name",
     {{"Kept", 0, "/Dest (one)"},
      {"Hex", 0, "/Dest <74776f>"},
      {"Chapter", 0, "/A << /S /GoTo /D (two) >>"},
      {"Under", 1, "/A << /S /GoTo /D (one) >>"}},
     {"Kept!", "Chapter(1)", "-Under!"}},
    {"what is unusual is read as well",
     {{"Indirect", 0, "/Dest @array2"},
      {"Kept", 0, "/Dest @array1"},
      {"Both", 0, "/Dest [@p2 /Fit] /A << /S /GoTo /D [@p2 /Fit] >>"},
      {"Null", 0, "/Dest null /A << /S /GoTo /D [@p2 /Fit] >>"},
      {"Nowhere", 0, "/Dest [999 0 R /Fit]"}},
     {"Kept!", "Nowhere!"}},
};

TEST(Outlines, KeepWhatStillLeadsSomewhere)
{
    for (const Case& given : cases) {
        SCOPED_TRACE(given.name);
        const std::string pdf =
            withOutline(4, given.lines,
                        "/Names << /Dests << /Names [(one) [@p1 /Fit] (two) [@p2 /Fit]] >> >>")
                .built();
        const std::string left = support::withoutPages(pdf, {2});
        EXPECT_EQ(told(left), given.expected);
        support::expectSameWithoutIndex(pdf, {2}, left);
    }
}

/// Any outline comes out the same by its entries' texts and when every entry is built.
TEST(Outlines, AreTheSameHoweverTheyAreRead)
{
    const std::vector<std::string> targets = {"",
                                              "/Dest [@p1 /Fit]",
                                              "/Dest [@p2 /Fit]",
                                              "/Dest[ @p3 /XYZ 0 0 0 ]/SE @p1",
                                              "/Dest @array2",
                                              "/Dest (two)",
                                              "/Dest /old",
                                              "/Dest [1 /Fit]",
                                              "/A << /S /GoTo /D [@p2 /Fit] >>",
                                              "/A <</S/GoTo/D(one)>>",
                                              "/A << /S /GoTo /D [@p2 /Fit] /Next << /S /GoTo "
                                              "/D [@p3 /Fit] >> >>",
                                              "/A << /S /URI /URI (x) >> /SE @p2"};
    std::mt19937 random(7);
    for (int round = 0; round < 25; ++round) {
        std::vector<Line> lines;
        for (std::uint32_t i = 0; i < 30; ++i) {
            const int deepest = lines.empty() ? 0 : lines.back().level + 1;
            lines.push_back({"E" + std::to_string(i),
                             static_cast<int>(random() % static_cast<std::uint32_t>(deepest + 1)),
                             targets[random() % targets.size()], random() % 2 == 0});
        }
        const std::vector<int> deleted =
            round % 2 == 0 ? std::vector<int>{2} : std::vector<int>{4, 1};
        const std::string pdf =
            withOutline(4, lines,
                        "/Names << /Dests << /Names [(one) [@p1 /Fit] (two) [@p2 /Fit]] >> >> "
                        "/Dests << /old [@p2 /Fit] >>")
                .built();
        const std::string left = support::withoutPages(pdf, deleted);
        told(left); // looks at how entries hang together
        support::expectSameWithoutIndex(pdf, deleted, left);
    }
}

TEST(Outlines, AreNotTouchedWhenNothingInThemWent)
{
    auto document = support::opened(
        withOutline(4, {{"One", 0, "/Dest [@p1 /Fit]"}, {"Under", 1, "/Dest [@p3 /Fit]"}}).built());
    ASSERT_TRUE(pages::deletePages(*document, {2, 1}).has_value());
    ASSERT_TRUE(deletion::synchronize(*document).has_value());
    QPDFObjectHandle outlines = document->catalog().getKey("/Outlines");
    EXPECT_EQ(document->changes().kind(outlines.getObjectID()), std::nullopt);
    EXPECT_EQ(document->changes().kind(outlines.getKey("/First").getObjectID()), std::nullopt);
}

TEST(Outlines, AreChangedByTheirTextsWhereTheseTellAll)
{
    auto document = support::opened(
        withOutline(4, {{"One", 0, "/Dest [@p1 /Fit]"}, {"Two", 0, "/Dest [@p2 /Fit]"}}).built());
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
    const Sketch sketch =
        withOutline(2, {{"Two", 0, "/Dest [@p2 /Fit]"}, {"Under", 1, "/Dest [@p2 /Fit]"}});
    const std::string saved = support::withoutPages(sketch.built(), {2});
    EXPECT_EQ(support::valueAt(saved, "Root/Outlines"), "nothing");
    EXPECT_EQ(support::valueAt(saved, "Root/PageMode"), "nothing");
}

TEST(Outlines, AreReadWhereTheCatalogHoldsThem)
{
    const Sketch sketch = {{"", "", ""},
                           "/Outlines << /First @one /Last @two /Count 2 >>",
                           {{"one", "<< /Title (One) /Dest [@p1 /Fit] /Next @two >>"},
                            {"two", "<< /Title (Two) /Dest [@p2 /Fit] /Prev @one >>"}}};
    const std::string left = support::withoutPages(sketch.built(), {2});
    support::expectSameWithoutIndex(sketch.built(), {2}, left);
    EXPECT_EQ(support::valueAt(left, "Root/Outlines/Count"), "1");
    EXPECT_EQ(support::valueAt(left, "Root/Outlines/Last/Title"), "(One)");
    EXPECT_EQ(support::valueAt(left, "Root/Outlines/First/Next"), "nothing");
    EXPECT_EQ(support::everythingIn(left).find("Two"), std::string::npos);
}

TEST(Outlines, OfAnyShapeAreRead)
{
    // A ring of entries, one of which is its own child, and 3,000 levels of depth.
    const Sketch ring = {
        {"", "", ""},
        "/Outlines @root",
        {{"root", "<< /First @a /Last @b /Count 2 >>"},
         {"a", "<< /Title (A) /Dest [@p2 /Fit] /Parent @root /Next @b /First @a >>"},
         {"b", "<< /Title (B) /Dest [@p1 /Fit] /Parent @root /Next @a >>"}}};
    EXPECT_EQ(told(support::withoutPages(ring.built(), {2})), std::vector<std::string>{"B!"});

    std::vector<Line> lines;
    for (int level = 0; level < 3000; ++level) {
        lines.push_back({"L" + std::to_string(level), level,
                         level % 2 == 0 ? "/Dest [@p1 /Fit]" : "/Dest [@p2 /Fit]"});
    }
    const std::string left = support::withoutPages(withOutline(3, lines).built(), {2});
    EXPECT_EQ(support::valueAt(left, "Root/Outlines"), "dictionary");
}

TEST(Outlines, LoseEntriesThatLeadByStructureAloneToWhatWent)
{
    Sketch sketch = withOutline(2, {{"One", 0, "/SE @one"},
                                    {"Two", 0, "/SE @two"},
                                    {"Two and page 1", 0, "/SE @two /Dest [@p1 /Fit]"},
                                    {"Above", 0, "/SE @two"},
                                    {"Below", 1, "/SE @one"},
                                    {"Nowhere", 0, "/SE 999 0 R"}});
    sketch.catalog += " /StructTreeRoot @root";
    sketch.objects.insert(sketch.objects.end(),
                          {{"root", "<< /Type /StructTreeRoot /K [@one @two] >>"},
                           {"one", "<< /Type /StructElem /S /P /P @root /Pg @p1 /K 0 >>"},
                           {"two", "<< /Type /StructElem /S /P /P @root /Pg @p2 /K 0 >>"}});
    const std::string pdf = sketch.built();
    for (const char* before : {"", " "}) { // which makes the file unfit for an index
        EXPECT_EQ(
            told(support::withoutPages(before + pdf, {2})),
            (std::vector<std::string>{"One", "Two and page 1!", "Above(1)", "-Below", "Nowhere"}));
    }
}

} // namespace
