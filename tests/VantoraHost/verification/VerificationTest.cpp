#include "VantoraHost/verification/Verification.h"

#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace {

using namespace vantora::verification;
using support::PdfBuilder;
using support::Sketch;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A document of three pages that has everything which belongs to pages.
std::string richDocument()
{
    Sketch sketch = support::residueDocument(3);
    sketch.pages[1] += " /Picture @picture";
    sketch.objects.emplace_back("picture", "/Type /XObject /Subtype /Image /Width 12 /Height 1 "
                                           "/ColorSpace /DeviceGray /BitsPerComponent 8|"
                                           "own2-image..");
    for (auto& [name, text] : sketch.objects) {
        if (name.rfind("content", 0) == 0) {
            text = support::replaced(text, "-text) Tj", "-text that is long) Tj");
        }
    }
    sketch.catalog += " /Lang (en)";
    return sketch.built();
}

std::string without(const std::string& pdf, const std::vector<int>& descending,
                    const std::string& password = {})
{
    auto document = support::opened(pdf, password);
    for (const int page : descending) {
        EXPECT_TRUE(karvel::pages::deletePages(*document, {page, 1}).has_value());
    }
    return support::savedIn(*document);
}

/// A file after libqpdf wrote it with a change; objects that nothing refers to stay.
std::string changed(const std::string& pdf, const std::function<void(QPDF&)>& change,
                    qpdf_object_stream_e mode = qpdf_o_preserve)
{
    QPDF file;
    file.processMemoryFile("", pdf.data(), pdf.size());
    change(file);
    QPDFWriter writer(file);
    writer.setOutputMemory();
    writer.setPreserveUnreferencedObjects(true);
    writer.setObjectStreamMode(mode);
    writer.write();
    const auto buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

// An object that nothing refers to; a text after "|" makes it a stream.
void addObject(QPDF& file, const std::string& text)
{
    const std::size_t bar = text.find('|');
    if (bar == std::string::npos) {
        file.makeIndirectObject(QPDFObjectHandle::parse(text));
        return;
    }
    QPDFObjectHandle stream = file.newStream(text.substr(bar + 1));
    for (auto& [key, value] :
         QPDFObjectHandle::parse("<< " + text.substr(0, bar) + " >>").getDictAsMap()) {
        stream.getDict().replaceKey(key, value);
    }
}

tl::expected<Verdict, Refusal> answer(const std::string& before, const std::string& after,
                                      std::vector<std::pair<int, int>> removed,
                                      std::vector<std::string> passwords = {})
{
    const support::ScratchFolder folder;
    const auto verifier = loadVerifier(VERIFIER);
    if (!verifier) {
        return tl::unexpected<Refusal>(Refusal{Refusal::Why::Failed, false, verifier.error()});
    }
    return (*verifier)->verify({folder.write("before.pdf", before),
                                folder.write("after.pdf", after), std::move(removed),
                                std::move(passwords)});
}

// "kind page: what", in the order in which they were found.
std::vector<std::string> findings(const std::string& before, const std::string& after,
                                  const std::vector<std::pair<int, int>>& removed = {{2, 2}},
                                  const std::vector<std::string>& passwords = {})
{
    const auto verdict = answer(before, after, removed, passwords);
    std::vector<std::string> all;
    if (!verdict) {
        return {"refused: " + verdict.error().sentence};
    }
    for (const Finding& finding : verdict->findings) {
        all.push_back(std::string(kindName(finding.kind)) + " " + std::to_string(finding.page) +
                      ": " + finding.what);
    }
    return all;
}

TEST(Verification, FindsNothingInWhatTheLibraryWrites)
{
    struct {
        const char* name;
        const char* options;
        const char* password;
    } const forms[] = {
        {"plain", nullptr, ""},
        {"object streams", "--object-streams=generate", ""},
        {"linearised", "--linearize --object-streams=generate", ""},
        {"encrypted by RC4", "--allow-weak-crypto --encrypt u o 128 --use-aes=n --", "u"},
        {"encrypted by AES", "--object-streams=generate --encrypt u o 256 --print=none --", "o"},
    };
    for (const auto& form : forms) {
        SCOPED_TRACE(form.name);
        const std::string pdf =
            form.options ? support::rewritten(richDocument(), form.options) : richDocument();
        EXPECT_THAT(findings(pdf, without(pdf, {2}, form.password), {{2, 2}}, {form.password}),
                    IsEmpty());
        EXPECT_THAT(findings(pdf, without(pdf, {3, 1}, form.password), {{1, 1}, {3, 9}},
                             {"wrong", form.password}),
                    IsEmpty());
    }
}

TEST(Verification, CountsWhatWentBesideThePagesAndKnowsThemByTheirLabels)
{
    support::PagedDocument file(4);
    const auto page = [&](int number) {
        return PdfBuilder::reference(file.pages[static_cast<std::size_t>(number - 1)]);
    };
    const int outline = file.builder.reserve();
    std::vector<std::string> entries;
    for (int number = 0; number < 3; ++number) {
        entries.push_back(PdfBuilder::reference(file.builder.reserve()));
    }
    for (int number = 0; number < 3; ++number) {
        const std::string next = number < 2 ? " /Next " + entries[number + 1] : "";
        const std::string previous = number > 0 ? " /Prev " + entries[number - 1] : "";
        file.builder.set(outline + 1 + number,
                         "<< /Title (entry) /Parent " + PdfBuilder::reference(outline) + next +
                             previous + " /Dest [" + page(number + 1) + " /Fit] >>");
    }
    file.builder.set(outline, "<< /First " + entries[0] + " /Last " + entries[2] + " /Count 3 >>");
    file.catalogEntries = "/Outlines " + PdfBuilder::reference(outline) +
                          " /PageLabels << /Nums [0 << /S /r >> 2 << /S /D /P (A-) >>] >>";
    const std::string pdf = file.build();
    const auto verdict = answer(pdf, without(pdf, {3, 2}), {{2, 3}});
    ASSERT_TRUE(verdict) << verdict.error().sentence;
    EXPECT_TRUE(verdict->passed());
    EXPECT_EQ(verdict->amounts.outlineEntries.before, 3U);
    EXPECT_EQ(verdict->amounts.outlineEntries.after, 1U);
    ASSERT_EQ(verdict->labels.size(), 1U);
    EXPECT_EQ(verdict->labels[0].first, 2);
    EXPECT_EQ(verdict->labels[0].last, 3);
    EXPECT_EQ(verdict->labels[0].firstLabel + " " + verdict->labels[0].lastLabel, "ii A-1");

    const std::string rich = richDocument();
    const auto richer = answer(rich, without(rich, {2}), {{2, 2}});
    ASSERT_TRUE(richer) << richer.error().sentence;
    const Amounts& amounts = richer->amounts;
    for (const Amount* amount :
         {&amounts.outlineEntries, &amounts.links, &amounts.fields, &amounts.attachments}) {
        EXPECT_GT(amount->before, amount->after);
    }
    EXPECT_EQ(amounts.signatures.before, 0U);
}

TEST(Verification, FindsALeakOfEachKindInAnObjectThatNobodyRefersTo)
{
    struct {
        const char* kind;
        const char* object;
    } const leaks[] = {
        {"page-object 0", "<< /Type /Page /MediaBox [0 0 9 9] >>"},
        {"image 2", "/Width 12|own2-image.."},
        {"resource 2", "|own2-fontfile."},
        {"resource 2", "|BT (own2-form) Tj ET /Inner2 Do"},
        {"text 2", "<< /Note (it was own2-text that is long, I think) >>"},
        {"text 2", "<< /Note (\\376\\377\\000o\\000w\\000n\\0002\\000-\\000t\\000e\\000x\\000t"
                   "\\000 \\000t\\000h\\000a\\000t\\000 \\000i\\000s\\000 \\000l\\000o\\000n"
                   "\\000g) >>"},
        {"text 2", "|BT [(own2-t) -20 (ext that) 7 ( is long)] TJ ET"},
        {"annotation 2", "[[(own2-note)]]"},
        {"form-value 2", "(own2-value)"},
        {"form-value 2", "<< /T (own2-branch) >>"},
        {"outline-title 2", "<< /Title (own2-entry-a) >>"},
        {"name 2", "(own2-a)"},
        {"label-text 2", "(own2-label)"},
        {"thumbnail 2", "|own2-thumb.."},
        {"attachment 2", "|own2-file-data."},
        {"attachment 2", "(own2-file.txt)"},
        {"structure-element 2", "<< /Alt (own2-alt) >>"},
        {"metadata 2", "|<x:xmpmeta>own2-xmp</x:xmpmeta>"},
        {"private-data 2", "(own2-private)"},
        {"private-data 0", "(own2-listed)"},
    };
    const std::string before = richDocument();
    const std::string after = without(before, {2});
    for (const auto& leak : leaks) {
        SCOPED_TRACE(leak.object);
        const std::string leaky = changed(after, [&](QPDF& file) { addObject(file, leak.object); });
        EXPECT_THAT(findings(before, leaky), ElementsAre(HasSubstr(leak.kind)));
    }
}

/// Bytes that stand between the last object and the table.
std::string withBytes(const std::string& pdf, const std::string& bytes)
{
    const std::size_t table = pdf.rfind("xref\n0 ", pdf.rfind("trailer"));
    const std::size_t start = pdf.rfind("startxref");
    std::string file = pdf;
    file.replace(start, std::string::npos,
                 "startxref\n" + std::to_string(table + bytes.size()) + "\n%%EOF\n");
    return file.insert(table, bytes);
}

TEST(Verification, FindsALeakWhereverItLies)
{
    const std::string before = richDocument();
    const std::string after = without(before, {2});
    const std::string note = "annotation 2: \"own2-note\"";
    EXPECT_THAT(findings(before, withBytes(after, "3333 0 obj (own2-note) endobj\n")),
                ElementsAre(note))
        << "between objects";
    EXPECT_THAT(findings(before, withBytes(after, "3333 0 obj (x) endobj\n3333 0 obj\n"
                                                  "[(own2-note)] endobj\n")),
                ElementsAre(note))
        << "in an earlier one of several revisions";
    EXPECT_THAT(findings(before, withBytes(after, "3333 0 obj << /Type /ObjStm /N 1 /First 5 "
                                                  "/Length 16 >> stream\n44 0 (own2-note)\n"
                                                  "endstream endobj\n")),
                ElementsAre(note))
        << "in an object stream that nothing lists";
    EXPECT_THAT(findings(before, withBytes(after, "% own2-text that is long\n")),
                ElementsAre(HasSubstr("text 2: ")))
        << "in a comment";
    EXPECT_THAT(findings(before, changed(
                                     after, [](QPDF& file) { addObject(file, "(own2-note)"); },
                                     qpdf_o_generate)),
                ElementsAre(note))
        << "in an object stream";
    const std::string locked = support::rewritten(before, "--encrypt u o 256 --");
    const std::string leaky =
        support::rewritten(changed(after, [](QPDF& file) { addObject(file, "[(own2-note)]"); }),
                           "--preserve-unreferenced --encrypt u o 256 --");
    EXPECT_THAT(findings(locked, leaky, {{2, 2}}, {"u"}), ElementsAre(note)) << "encrypted";
}

TEST(Verification, FindsAPageInAnEarlierRevision)
{
    support::PagedDocument pages(3);
    const std::string before = pages.build();
    const std::string root = std::to_string(pages.root);
    const std::string update = root + " 0 obj << /Type /Pages /Count 2 /Kids [" +
                               PdfBuilder::reference(pages.pages[0]) + " " +
                               PdfBuilder::reference(pages.pages[2]) + "] >> endobj\n";
    const std::size_t start = before.size() + update.size();
    const std::string after =
        before + update + "xref\n" + root + " 1\n" + PdfBuilder::tableRow(before.size()) +
        "trailer << /Size 99 /Root " + PdfBuilder::reference(pages.catalog) + " /Prev " +
        before.substr(before.rfind("startxref\n") + 10,
                      before.find("\n%%EOF") - before.rfind("startxref\n") - 10) +
        " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
    EXPECT_THAT(findings(before, after),
                testing::IsSupersetOf({HasSubstr("page-object 2"), HasSubstr("content-stream 2")}));
}

TEST(Verification, FindsWhatKeptPagesAndTheDocumentLost)
{
    const auto page = [](QPDF& file, int number) {
        return file.getAllPages()[static_cast<std::size_t>(number - 1)];
    };
    struct {
        const char* kind;
        std::function<void(QPDF&)> change;
    } const changes[] = {
        {"page-count 0", [&](QPDF& file) { file.removePage(page(file, 2)); }},
        {"kept-content 3",
         [&](QPDF& file) { page(file, 2).replaceKey("/Contents", file.newStream("q Q")); }},
        {"kept-text 3",
         [&](QPDF& file) { page(file, 2).replaceKey("/Contents", file.newStream("q Q")); }},
        {"kept-picture 1",
         [&](QPDF& file) {
             page(file, 1)
                 .getKey("/Contents")
                 .replaceStreamData("0 0 99 99 re f", QPDFObjectHandle::newNull(),
                                    QPDFObjectHandle::newNull());
         }},
        {"kept-size 1",
         [&](QPDF& file) {
             page(file, 1).replaceKey("/Rotate", QPDFObjectHandle::newInteger(90));
         }},
        {"kept-size 3",
         [&](QPDF& file) {
             page(file, 2).replaceKey("/CropBox", QPDFObjectHandle::parse("[9 9 99 99]"));
         }},
        {"kept-label 3", [](QPDF& file) { file.getRoot().removeKey("/PageLabels"); }},
        {"kept-link 1",
         [&](QPDF& file) {
             for (QPDFObjectHandle& annotation :
                  page(file, 1).getKey("/Annots").getArrayAsVector()) {
                 annotation.removeKey("/Dest");
             }
         }},
        {"kept-annotation 1", [&](QPDF& file) { page(file, 1).getKey("/Annots").eraseItem(0); }},
        {"kept-field 0",
         [](QPDF& file) {
             QPDFObjectHandle fields = file.getRoot().getKey("/AcroForm").getKey("/Fields");
             fields.getArrayItem(1).replaceKey("/V", QPDFObjectHandle::newString("other"));
         }},
        {"kept-document 0: the outline entry \"A site\"",
         [](QPDF& file) { file.getRoot().removeKey("/Outlines"); }},
        {"kept-document 1: the destination \"own1-a\"",
         [](QPDF& file) { file.getRoot().getKey("/Names").removeKey("/Dests"); }},
        {"the attached file \"attached\"",
         [](QPDF& file) { file.getRoot().getKey("/Names").removeKey("/EmbeddedFiles"); }},
        {"the document's Lang", [](QPDF& file) { file.getRoot().removeKey("/Lang"); }},
        {"the document's StructTreeRoot",
         [](QPDF& file) { file.getRoot().removeKey("/StructTreeRoot"); }},
    };
    const std::string before = richDocument();
    const std::string after = without(before, {2});
    EXPECT_THAT(findings(before, changed(after, [](QPDF&) {})), IsEmpty());
    for (const auto& change : changes) {
        SCOPED_TRACE(change.kind);
        EXPECT_THAT(findings(before, changed(after, change.change)),
                    Contains(HasSubstr(change.kind)));
    }
}

TEST(Verification, TakesWhatMeansTheSameForTheSame)
{
    const std::string before = richDocument();
    const std::string same = changed(without(before, {2}), [](QPDF& file) {
        for (QPDFObjectHandle page : file.getAllPages()) {
            QPDFObjectHandle box = page.getKey("/MediaBox");
            if (box.isArray()) {
                page.replaceKey("/CropBox", box);
            }
            page.replaceKey("/Rotate", QPDFObjectHandle::newInteger(360));
            page.replaceKey("/UserUnit", QPDFObjectHandle::newInteger(1));
            page.replaceKey("/Contents", QPDFObjectHandle::newArray({page.getKey("/Contents")}));
        }
    });
    EXPECT_THAT(findings(before, same), IsEmpty());
    EXPECT_THAT(findings(before, support::rewritten(without(before, {2}), "--qdf")), IsEmpty());
}

TEST(Verification, AnswersWhateverAFileIsMadeOf)
{
    const std::string before = support::documentOfPages(3);
    const auto rooted = [](const std::string& catalog, const std::string& object) {
        PdfBuilder builder;
        const int root = builder.reserve();
        const int other = builder.reserve();
        builder.set(other, support::replaced(object + " ", "@", PdfBuilder::reference(other)));
        builder.set(root, "<< /Type /Catalog " +
                              support::replaced(catalog, "@", PdfBuilder::reference(other)) +
                              " >>");
        return builder.build(root);
    };
    const struct {
        const char* name;
        std::string file;
    } rows[] = {
        {"a page tree that is its own kid", rooted("/Pages @", "<< /Type /Pages /Kids [@] >>")},
        {"an outline that follows itself",
         rooted("/Outlines << /First @ >>", "<< /Title (a) /Next @ >>")},
        {"names that hold themselves", rooted("/Names << /Dests @ >>", "<< /Kids [@] >>")},
        {"a field that is its own kid",
         rooted("/AcroForm << /Fields [@] >>", "<< /T (a) /Kids [@] >>")},
        {"an element that is its own kid", rooted("/StructTreeRoot @", "<< /K [@] >>")},
        {"a list in lists", rooted("/Own @", std::string(400, '[') + "@" + std::string(400, ']'))},
        {"many words without an end", withBytes(
                                          before, std::string(30000, ' ') +
                                                      [] {
                                                          std::string words;
                                                          for (int i = 0; i < 20000; ++i) {
                                                              words += "7 0 obj ";
                                                          }
                                                          return words;
                                                      }())},
        {"an object stream that counts without end",
         withBytes(before, "8888 0 obj << /Type /ObjStm /N 2147483647 /First -5 /Length 9 >> "
                           "stream\n1 9 2 9 3\nendstream endobj\n")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto asAfter = answer(before, row.file, {{2, 2}});
        EXPECT_TRUE(asAfter ? !asAfter->passed() : !asAfter.error().sentence.empty());
        const auto asBefore = answer(row.file, before, {{2, 2}});
        EXPECT_TRUE(asBefore ? asBefore->pagesAfter == 3 : !asBefore.error().sentence.empty());
    }
}

TEST(Verification, FindsWeakerEncryption)
{
    const std::string before = support::documentOfPages(3);
    const std::string after = without(before, {2});
    const auto encrypted = [](const std::string& pdf, const std::string& options) {
        return support::rewritten(pdf, "--allow-weak-crypto --encrypt " + options + " --");
    };
    const std::string locked = encrypted(before, "u o 256 --print=none");
    const auto findingsIn = [&](const std::string& pdf) {
        return findings(locked, pdf, {{2, 2}}, {"u"});
    };
    EXPECT_THAT(findingsIn(encrypted(after, "u o 256 --print=none")), IsEmpty());
    EXPECT_THAT(findingsIn(after), ElementsAre(HasSubstr("no longer encrypted")));
    EXPECT_THAT(findingsIn(encrypted(after, "u o 256")), ElementsAre(HasSubstr("permits more")));
    EXPECT_THAT(findingsIn(encrypted(after, "u o 128 --use-aes=n --print=none")),
                ElementsAre(HasSubstr("by other means")));
    EXPECT_THAT(findingsIn(encrypted(after, "'' o 256 --print=none")),
                ElementsAre(HasSubstr("without a password")));
}

TEST(Verification, SaysWhatItCannotTell)
{
    support::PagedDocument pages(3);
    for (const int at : {1, 2}) { // the third page says what the second says, and draws more
        const int content = pages.builder.addStream(support::showText("the very same words here") +
                                                    (at == 2 ? "\n0 0 9 9 re f" : ""));
        pages.builder.set(pages.pages[static_cast<std::size_t>(at)],
                          "<< /Type /Page /Parent " + PdfBuilder::reference(pages.root) +
                              " /MediaBox [0 0 612 792] /Resources << /Font << /F1 << /Type /Font "
                              "/Subtype /Type1 /BaseFont /Helvetica >> >> >> /Contents " +
                              PdfBuilder::reference(content) + " >>");
    }
    const std::string before = pages.build();
    const auto shared = answer(before, without(before, {2}), {{2, 2}});
    ASSERT_TRUE(shared.has_value());
    EXPECT_TRUE(shared->passed());
    EXPECT_THAT(shared->notTold, Contains(HasSubstr("kept pages' as well")));
    const auto unreadable = answer(
        before,
        changed(without(before, {2}), [](QPDF& file) { addObject(file, "/Filter /Unknown|abc"); }),
        {{2, 2}});
    ASSERT_TRUE(unreadable.has_value());
    EXPECT_THAT(unreadable->notTold, Contains(HasSubstr("can't be decoded")));
}

TEST(Verification, RefusesWhatItCannotRead)
{
    const std::string pdf = support::documentOfPages(2);
    const auto noPdf = answer(pdf, "hello", {{1, 1}});
    ASSERT_FALSE(noPdf.has_value());
    EXPECT_TRUE(noPdf.error().isAfter);
    EXPECT_EQ(noPdf.error().why, Refusal::Why::NotPdf);
    const auto locked =
        answer(support::rewritten(pdf, "--encrypt u o 256 --"), pdf, {{1, 1}}, {"wrong"});
    ASSERT_FALSE(locked.has_value());
    EXPECT_FALSE(locked.error().isAfter);
    EXPECT_EQ(locked.error().why, Refusal::Why::PasswordNeeded);
}

TEST(Verification, PassesNoOutputThatIsDamaged)
{
    const std::string before = richDocument();
    const std::string after = without(before, {2});
    ASSERT_THAT(findings(before, after), IsEmpty());
    const auto cut = [&](std::size_t parts) { return after.substr(0, after.size() * parts / 8); };
    const struct {
        const char* name;
        std::string after;
    } rows[] = {
        {"nothing of it was written", ""},
        {"an eighth of it was written", cut(1)},
        {"half of it was written", cut(4)},
        {"seven eighths of it were written", cut(7)},
        {"a page has lost its size", support::replaced(after, "/MediaBox", "/MediaBux")},
        {"its pages are nowhere", support::replaced(after, "/Kids", "/Kidz")},
        {"a page is listed twice", changed(after,
                                           [](QPDF& file) {
                                               QPDFObjectHandle kids =
                                                   file.getRoot().getKey("/Pages").getKey("/Kids");
                                               kids.setArrayItem(1, kids.getArrayItem(0));
                                           })},
        {"its tree of pages leads back to itself",
         changed(after,
                 [](QPDF& file) {
                     QPDFObjectHandle pages = file.getRoot().getKey("/Pages");
                     pages.getKey("/Kids").setArrayItem(1, pages);
                 })},
        {"it is the document before", before},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_NE(row.after, after);
        EXPECT_THAT(findings(before, row.after), testing::Not(IsEmpty()));
    }
}

TEST(Verification, KnowsPagesByTheNumbersOfWhoAsksWhereOneCannotBeRead)
{
    support::PagedDocument file(4);
    const std::string page = "\n" + std::to_string(file.pages[1]) + " 0 ";
    const std::string whole = file.build();
    const std::string before = support::replaced(whole, page + "obj", page + "xxx");
    const support::ScratchFolder folder;
    const auto verifier = loadVerifier(VERIFIER);
    ASSERT_TRUE(verifier) << verifier.error();
    const auto ask = [&](const std::string& after, std::pair<int, int> removed, int pages,
                         std::vector<int> lost) {
        return (*verifier)->verify({std::string_view(before),
                                    std::string_view(after),
                                    {removed},
                                    {},
                                    pages,
                                    std::move(lost)});
    };
    // The second page is lost, and the third one is to go.
    const auto good = ask(without(whole, {3, 2}), {3, 3}, 4, {2});
    ASSERT_TRUE(good) << good.error().sentence;
    EXPECT_TRUE(good->passed());
    EXPECT_EQ(good->pagesAfter, 2);
    const auto bad = ask(without(whole, {4, 2}), {3, 3}, 4, {2});
    ASSERT_TRUE(bad) << bad.error().sentence;
    ASSERT_FALSE(bad->passed());
    EXPECT_EQ(bad->findings.front().page, 3);
    const auto otherwise = ask(without(whole, {3, 2}), {3, 3}, 6, {2});
    ASSERT_FALSE(otherwise);
    EXPECT_THAT(otherwise.error().sentence, HasSubstr("counted otherwise"));
}

} // namespace
