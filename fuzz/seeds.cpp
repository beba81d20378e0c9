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

} // namespace

/// fuzz_seeds FOLDER: writes documents to begin with, each followed by the bytes that say what is
/// done with it.
int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::filesystem::create_directories(folder);
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
