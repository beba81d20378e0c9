#include "SketchCase.h"

#include "KarvelPDFLibrary/base/WarningKinds.h"

namespace {

using namespace karvel;
using support::Sketch;
using testing::HasSubstr;

/// A way in which an object is damaged, given the file and where the object's text "N 0 obj" is.
struct Damage {
    const char* name;
    void (*damage)(std::string& pdf, std::size_t header);
};

void loseHeader(std::string& pdf, std::size_t header)
{
    pdf.replace(pdf.find(" obj", header), 4, " xxx");
}

void breakBrackets(std::string& pdf, std::size_t header)
{
    pdf.replace(pdf.find("<<", header), 2, "]]");
}

void overwrite(std::string& pdf, std::size_t header)
{
    const std::size_t end = pdf.find("endobj", header);
    pdf.replace(header, end - header, end - header, 'x');
}

void makeNull(std::string& pdf, std::size_t header)
{
    const std::size_t start = pdf.find("<<", header);
    const std::size_t end = pdf.find("endobj", header);
    pdf.replace(start, end - start, "null" + std::string(end - start - 5, ' ') + "\n");
}

const Damage damages[] = {{"header lost", loseHeader},
                          {"brackets broken", breakBrackets},
                          {"overwritten", overwrite},
                          {"null", makeNull}};

/// The file with the object damaged that a text lies in.
std::string damaged(std::string pdf, const std::string& text, const Damage& how)
{
    const std::size_t at = pdf.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    const std::size_t keyword = pdf.rfind(" 0 obj", at);
    how.damage(pdf, pdf.rfind('\n', keyword) + 1);
    return pdf;
}

/// What saving says when pages went, given from the highest down, or what was saved.
Result<std::string> withoutPages(Document& document, const std::vector<int>& pages)
{
    for (const int page : pages) {
        EXPECT_TRUE(pages::deletePages(document, {page, 1}).has_value());
    }
    return saving::toString(document, support::keeping());
}

Result<std::string> withoutPages(const std::string& pdf, const std::vector<int>& pages)
{
    return withoutPages(*support::opened(pdf), pages);
}

/// Five pages, of which the third has all that can belong to a page.
const Sketch fivePages = {
    {"", "/Annots [@link]",
     "/Marked (THIRD) /Annots [@widget @note @orphan] /Contents @c3 /StructParents 0", "",
     "/Annots [@popup]"},
    "/Outlines @outline /Names << /Dests << /Names [(third) [@p3 /Fit]] >> >> "
    "/AcroForm << /Fields [@field @lonely] >>",
    {{"link", "<< /Subtype /Link /Rect [0 0 9 9] /Dest [@p3 /Fit] >>"},
     {"c3", "|BT /F1 24 Tf 72 700 Td (Page 3) Tj ET"},
     {"widget", "<< /Subtype /Widget /Rect [0 0 9 9] /Parent @field /P @p3 >>"},
     {"field", "<< /FT /Tx /T (SECRET) /V (SECRET) /Kids [@widget] >>"},
     {"lonely", "<< /Subtype /Widget /FT /Tx /T (lonely) /V (SECRET) /Rect [0 0 9 9] >>"},
     {"note", "<< /Subtype /Text /Contents (SECRET) /Rect [0 0 9 9] >>"},
     {"orphan", "<< /Subtype /Text /Contents (SECRET) /Rect [0 0 9 9] /P @p3 >>"},
     {"popup", "<< /Subtype /Popup /Parent @orphan /Contents (SECRET) /Rect [0 0 9 9] >>"},
     {"outline", "<< /First @entry /Last @entry /Count 1 >>"},
     {"entry", "<< /Title (SECRET) /Parent @outline /Dest [@p3 /Fit] >>"}}};

TEST(AnUnreadablePageThatGoes, IsNoReasonToRefuseAndLeavesNothing)
{
    for (const Damage& how : damages) {
        SCOPED_TRACE(how.name);
        const std::string pdf = damaged(fivePages.built(), "(THIRD)", how);
        for (const std::vector<int>& gone :
             {std::vector<int>{3}, std::vector<int>{4, 3}, std::vector<int>{3, 1}}) {
            auto document = support::opened(pdf);
            ASSERT_EQ(document->pageCount(), 5);
            const auto saved = withoutPages(*document, gone);
            ASSERT_TRUE(saved.has_value()) << saved.error().text;
            std::vector<int> left = {1, 2, 3, 4, 5};
            for (const int page : gone) {
                left.erase(left.begin() + page - 1);
            }
            EXPECT_EQ(support::pageTexts(*saved), support::pagesNamed(left));
            EXPECT_EQ(support::problems(*saved), "");
            const std::string everything = support::everythingIn(*saved);
            EXPECT_EQ(everything.find("SECRET"), std::string::npos);
            EXPECT_EQ(everything.find("Page 3"), std::string::npos);
            EXPECT_THAT(document->warnings(),
                        testing::Contains(HasSubstr("page 3, which cannot be read, was removed")));
        }
    }
}

/// Damage because of which no page goes: what is removed, from the highest down, and why not.
struct Refusal {
    const char* name;
    std::vector<int> removed;
    const char* tree; ///< of the root of the page tree
    const char* lost; ///< a text in the object that is damaged; empty for none
    const char* why;
};

const Refusal refusals[] = {{"a node lost its kids",
                             {1},
                             "/Type /Pages /Count 6 /Kids [@p1 @childless @p2 @p3 @p4]",
                             "",
                             "damaged: page 2 and 1 other cannot be recovered"},
                            {"the tree breaks off",
                             {1},
                             "/Type /Pages /Count 4 /Kids [@p1 @p2] @p3 @p4",
                             "",
                             "damaged: page 3 and 1 other cannot be recovered"},
                            {"a reference to a page is garbled",
                             {1},
                             "/Type /Pages /Count 5 /Kids [@p1 @p2 12 0 S @p3 @p4]",
                             "",
                             "damaged: page 3 cannot be recovered"},
                            {"the page is there twice and one stays",
                             {3},
                             "/Type /Pages /Count 5 /Kids [@p1 @p2 @p2 @p3 @p4]",
                             "(NOTE2)",
                             "damaged: page 2 cannot be recovered"},
                            {"the page stays",
                             {1},
                             "/Type /Pages /Count 4 /Kids [@p1 @p2 @p3 @p4]",
                             "(NOTE2)",
                             "damaged: page 2 cannot be recovered"},
                            {"the page and another stay",
                             {4},
                             "/Type /Pages /Count 4 /Kids [@p1 @p2 @p3 @p4]",
                             "(NOTE2)",
                             "damaged: page 2 cannot be recovered"},
                            {"a page goes that is another where the lost one is not counted",
                             {4, 2},
                             "/Type /Pages /Count 4 /Kids [@p1 @p2 @p3 @p4]",
                             "(NOTE2)",
                             "viewers may call page 4 by another number"},
                            {"counts don't say how many pages were lost",
                             {2},
                             "/Type /Pages /Count 7 /Kids [@p1 @p2 @p3 @p4]",
                             "(NOTE2)",
                             "viewers may call page 2 by another number"},
                            {"a page goes behind an entry without a page",
                             {2},
                             "/Type /Pages /Count 4 /Kids [@p1 null @p2 @p3 @p4]",
                             "",
                             "viewers may call page 2 by another number"},
                            {"all pages behind an entry without a page go",
                             {4, 3, 2},
                             "/Type /Pages /Count 4 /Kids [@p1 999 0 R @p2 @p3 @p4]",
                             "",
                             "viewers may call page 4 by another number"},
                            {"a page goes behind a node that is there twice",
                             {4},
                             "/Type /Pages /Count 5 /Kids [@node @p2 @node @p3 @p4]",
                             "",
                             "viewers may call page 4 by another number"}};

std::string damagedAsIn(const Refusal& row)
{
    const Sketch sketch = {{"", "/Note (NOTE2)", "", ""},
                           "",
                           {{"node", "<< /Type /Pages /Count 1 /Kids [@p1] >>"},
                            {"childless", "<< /Type /Pages /Count 2 /Kjds [@p1 @p2] >>"}},
                           row.tree};
    return *row.lost == 0 ? sketch.built() : damaged(sketch.built(), row.lost, damages[0]);
}

TEST(ADamagedTree, IsRefusedWhereAnotherPageMayBeMeant)
{
    for (const Refusal& row : refusals) {
        SCOPED_TRACE(row.name);
        const auto saved = withoutPages(damagedAsIn(row), row.removed);
        ASSERT_FALSE(saved.has_value());
        EXPECT_EQ(saved.error().code, ErrorCode::NotPdf);
        EXPECT_THAT(saved.error().text, HasSubstr(row.why));
    }
}

std::unique_ptr<Document> openedForSalvage(const std::string& pdf)
{
    auto document = Document::load(io::fromMemory(pdf), {{}, true, true});
    EXPECT_TRUE(document.has_value()) << document.error().text;
    return document ? std::move(*document) : nullptr;
}

/// Damage that is a loss only where the page stays: what is said then.
struct Loss {
    const char* name;
    std::string pdf; ///< four pages, the third of which is damaged
    const char* refusal;
    const char* warning;
    std::vector<std::string> left; ///< when the first page went
};

/// The number and generation of the third page's content.
std::string contentOf(const std::string& pdf)
{
    const std::size_t start = pdf.find("/Contents ", pdf.find("(NOTE3)")) + 10;
    return pdf.substr(start, pdf.find(" R", start) - start);
}

std::vector<Loss> losses()
{
    const Sketch sketch = {
        {"", "",
         "/Note (NOTE3) /Contents @content /Resources << /Font << /F1 @font /F9 @spare >> /XObject "
         "<< /X "
         "@picture >> >>",
         ""},
        "",
        {{"content", "/Mark /Content|BT /F1 24 Tf 72 700 Td (Page 3) Tj ET"},
         {"font", "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"},
         {"spare", "<< /Type /Font /Subtype /Type1 /BaseFont /Courier >>"},
         {"picture", "/Mark /Picture /Type /XObject /Subtype /Form /BBox [0 0 9 9]|q Q"}}};
    const std::string pdf = sketch.built();
    return {{"the page",
             damaged(pdf, "(NOTE3)", damages[0]),
             "damaged: page 3 cannot be recovered",
             "lost of page 3: it cannot be read, and is left out",
             {"Page 2", "Page 4"}},
            {"its content",
             damaged(pdf, "/Mark /Content", damages[2]),
             "damaged: the content of page 3 cannot be recovered",
             "lost of page 3: content that cannot be read is missing",
             {"Page 2", "", "Page 4"}},
            {"the reference to its content",
             support::replaced(pdf, "/Contents " + contentOf(pdf) + " R",
                               "/Contents " + contentOf(pdf) + " S"),
             "damaged: the content of page 3 cannot be recovered",
             "lost of page 3: content that cannot be read is missing",
             {"Page 2", "", "Page 4"}},
            {"its font",
             damaged(pdf, "/BaseFont /Courier", damages[1]),
             "damaged: the content of page 3 cannot be recovered",
             "lost of page 3: content that cannot be read is missing",
             {"Page 2", "Page 3", "Page 4"}},
            {"its picture",
             damaged(pdf, "/Mark /Picture", damages[1]),
             "damaged: the content of page 3 cannot be recovered",
             "lost of page 3: content that cannot be read is missing",
             {"Page 2", "Page 3", "Page 4"}}};
}

TEST(Salvage, KeepsWhatCanBeKeptAndNamesTheRest)
{
    for (const Loss& row : losses()) {
        SCOPED_TRACE(row.name);
        const auto refused = withoutPages(row.pdf, {1});
        ASSERT_FALSE(refused.has_value());
        EXPECT_THAT(refused.error().text, HasSubstr(row.refusal));

        auto document = openedForSalvage(row.pdf);
        const auto saved = withoutPages(*document, {1});
        ASSERT_TRUE(saved.has_value()) << saved.error().text;
        EXPECT_EQ(support::pageTexts(*saved), row.left);
        EXPECT_EQ(support::problems(*saved), "");
        EXPECT_THAT(document->warnings(), testing::Contains(row.warning));
        EXPECT_EQ(document->pageCount(), static_cast<int>(row.left.size()));

        const auto without = withoutPages(row.pdf, {3});
        ASSERT_TRUE(without.has_value()) << without.error().text;
        EXPECT_EQ(support::pageTexts(*without), support::pagesNamed({1, 2, 4}));
        EXPECT_EQ(support::problems(*without), "");
    }
}

TEST(Salvage, KeepsContentThatBreaksOffAsItIs)
{
    // The content of the last page comes last in the file, which breaks off within it.
    const Sketch sketch = {
        {"", "/Contents @content"},
        "",
        {{"content", "/Mark 1|BT /F1 24 Tf 72 700 Td (Page 2) Tj ET %" + std::string(300, '.')}}};
    std::string pdf = sketch.built();
    const std::size_t trailer = pdf.find("trailer");
    const std::string end = pdf.substr(trailer);
    const std::size_t data = pdf.find("(Page 2) Tj ET");
    const std::string kept = pdf.substr(data, 100);
    // Everything that comes behind is lost: the table as well.
    const std::size_t header = pdf.rfind(" 0 obj", data);
    const std::size_t start = pdf.rfind('\n', header) + 1;
    const std::string object = pdf.substr(start, pdf.find("endobj", start) + 7 - start);
    pdf = pdf.substr(0, start) + pdf.substr(start + object.size());
    pdf = pdf.substr(0, pdf.find("xref\n")) + end.substr(0, end.find("startxref")) +
          object.substr(0, object.find(kept) + kept.size());

    EXPECT_FALSE(withoutPages(pdf, {1}).has_value());
    auto document = openedForSalvage(pdf);
    const auto saved = withoutPages(*document, {1});
    ASSERT_TRUE(saved.has_value()) << saved.error().text;
    EXPECT_NE(saved->find(kept), std::string::npos);
    EXPECT_EQ(support::pageTexts(*saved), support::pagesNamed({2}));
    EXPECT_THAT(document->warnings(), testing::Contains(HasSubstr("lost of page 2: its content")));
}

TEST(AnUnreadablePageThatGoes, MayBeOneToWhichAGarbledReferenceLed)
{
    const std::pair<Sketch, int> rows[] = {
        {{{"", "", ""}, "", {}, "/Type /Pages /Count 4 /Kids [@p1 12 0 S @p2 @p3]"}, 2},
        {{{"", "", ""},
          "",
          {{"node", "<< /Type /Pages /Count 1 /Kids [12 0 S] >>"}},
          "/Type /Pages /Count 4 /Kids [@node @p1 @p2 @p3]"},
         1},
    };
    for (const auto& [sketch, removed] : rows) {
        const auto saved = withoutPages(sketch.built(), {removed});
        ASSERT_TRUE(saved.has_value()) << saved.error().text;
        EXPECT_EQ(support::pageTexts(*saved), support::pagesNamed({1, 2, 3})) << removed;
    }
}

TEST(Salvage, DoesWhereAnotherPageMayBeMeantAsTheDocumentCounts)
{
    for (const Refusal& row : refusals) {
        SCOPED_TRACE(row.name);
        auto document = openedForSalvage(damagedAsIn(row));
        const auto saved = withoutPages(*document, row.removed);
        ASSERT_TRUE(saved.has_value()) << saved.error().text;
        EXPECT_EQ(support::problems(*saved), "");
        EXPECT_THAT(document->warnings(),
                    testing::Contains(testing::AnyOf(HasSubstr("lost of page "),
                                                     HasSubstr("viewers may call page"))));
    }
}

} // namespace
