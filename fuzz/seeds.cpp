#include "VantoraHost/core/workers/WorkerMessages.h"
#include "tests/KarvelPDFLibrary/deletion/ResidueDocument.h"
#include "tests/support/Inspect.h"
#include "tests/support/PdfBuilder.h"
#include "tests/support/Sketch.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

void write(const std::filesystem::path& file, const std::string& bytes)
{
    std::ofstream out(file, std::ios::binary);
    out << bytes;
    if (!out.flush()) {
        std::cerr << "fuzz_seeds: error: " << file.string() << " can't be written\n";
        std::exit(1);
    }
}

/// Documents, each followed by the bytes that say what is done with it.
void writeDocuments(const std::filesystem::path& folder)
{
    const std::string rich = support::residueDocument(2).built();
    const std::string templates = support::Sketch{
        {"/Own @a", "", "/Own @b", "/Annots [@n]"},
        "/Names << /Templates << /Names [(a) @a (b) @b (c) @c] >> >>",
        {{"a", "<< /Type /Page /MediaBox [0 0 9 9] /Annots [@n] /Own @c >>"},
         {"b", "<< /Type @t /Parent @pages /Own [<< /Type /Page /Own [@a @p1] >>] >>"},
         {"c", "[(only on such pages) @b]"},
         {"n", "<< /Subtype /Text /Rect [0 0 9 9] /P @a >>"},
         {"t", "/Page"}}}.built();
    const std::pair<const char*, std::string> documents[] = {
        {"plain", support::documentOfPages(8)},
        {"rich", rich},
        {"later-revision", support::withLaterRevision(rich, 2)},
        {"object-streams", support::rewritten(rich, "--object-streams=generate")},
        {"linearised", support::rewritten(rich, "--linearize")},
        {"templates", templates},
        {"templates-in-object-streams", support::rewritten(templates, "--object-streams=generate")},
        {"encrypted", support::rewritten(rich, "--encrypt '' owner 128 --use-aes=y --")},
        {"old-encryption",
         support::rewritten(rich, "--encrypt '' owner 40 -- --allow-weak-crypto")},
    };
    for (const auto& [name, pdf] : documents) {
        write(folder / name, pdf + std::string("\x00\x01\x00\x02\x01\x03", 6));
        write(folder / (std::string(name) + "-to-linearise"),
              pdf + std::string("\x00\x01\x00\x02\x01\x0f", 6));
    }
}

/// What a run and its workers say.
void writeMessages(const std::filesystem::path& folder)
{
    using namespace vantora;
    WorkerSetup setup;
    setup.library = "/l";
    setup.steps = {{"Delete Pages", {{"byPageRangeTextEdit", "1"}}}};
    setup.job.judged = {{"1 2 3 4", 9, "2,7", {3}}};
    setup.files = {{"in"}, {"out"}};
    write(folder / "setup", setupMessage(setup));
    Target target;
    target.name = target.path = "b.pdf";
    target.root = FileIdentity{7, 8};
    target.replaced = FileVersion{7, 9, 10, 11};
    write(folder / "tasks", tasksMessage({{7, "a.pdf", target, "1-3"}, {8, "c.pdf", target}}));
    DocumentReport report;
    report.input = "a.pdf";
    report.pagesRemoved = {1, 2};
    report.warnings = {"w"};
    report.verified.emplace().labels = {{1, 2, "i", "ii"}};
    report.losses = {{3, "gone"}};
    report.error = {Reason::NotPdf, "a.pdf", "no PDF"};
    write(folder / "report", answerMessage(WorkerReport{1, report}));
    write(folder / "written", answerMessage(WorkerWritten{1, report, {7, 8}}));
    write(folder / "placed", answerMessage(WorkerPlaced{{1, 2}}));
    write(folder / "end", answerMessage(WorkerEnd{report.error, true}));
}

} // namespace

/// fuzz_seeds FOLDER: writes what to begin with into a folder there for each target that has no
/// seeds in the sources.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    const std::pair<const char*, void (*)(const std::filesystem::path&)> targets[] = {
        {"deletion", writeDocuments}, {"messages", writeMessages}};
    for (const auto& [name, writeAll] : targets) {
        std::filesystem::create_directories(folder / name);
        writeAll(folder / name);
    }
}
