#include "tests/KarvelPDFLibrary/blankness/LabelledPages.h"

#include "tests/KarvelPDFLibrary/blankness/Page.h"

#include <algorithm>

namespace labelled {

namespace {

using support::PdfBuilder;

const std::vector<PageRow>& rows()
{
    static const std::vector<PageRow> all = [] {
        std::vector<PageRow> both = drawnRows();
        const std::vector<PageRow> scanned = scannedRows();
        both.insert(both.end(), scanned.begin(), scanned.end());
        return both;
    }();
    return all;
}

/// Fowler, Noll, Vo: FNV-1a.
std::uint64_t hashOf(const std::string& text)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3U;
    }
    return hash;
}

} // namespace

std::vector<Kind> kinds()
{
    std::vector<Kind> all;
    for (const PageRow& row : rows()) {
        all.push_back(row.kind);
    }
    return all;
}

std::string documentOf(const Kind& kind, int pages, std::uint64_t seed)
{
    const auto row = std::find_if(rows().begin(), rows().end(), [&](const PageRow& each) {
        return std::string(each.kind.name) == kind.name;
    });
    PdfBuilder builder;
    const int catalog = builder.reserve();
    const int root = builder.reserve();
    const int font = builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    std::string kids;
    for (int index = 0; index < pages; ++index) {
        Random random(seed * 1000003 + hashOf(kind.name) % 1000003 * 7919 +
                      static_cast<std::uint64_t>(index));
        Page page{builder};
        row->make(page, index, random);
        const int contents = builder.addStream(page.content);
        kids += PdfBuilder::reference(builder.add(
                    "<< /Type /Page /Parent " + PdfBuilder::reference(root) + " /MediaBox [0 0 " +
                    numbers({page.width * pointsPerMillimetre, page.height * pointsPerMillimetre}) +
                    "] /Contents " + PdfBuilder::reference(contents) + " /Annots [" +
                    page.annotations + "] /Resources << /Font << /F1 " +
                    PdfBuilder::reference(font) + " >> " + page.resources + " >> >>")) +
                " ";
    }
    builder.set(root,
                "<< /Type /Pages /Count " + std::to_string(pages) + " /Kids [" + kids + "] >>");
    builder.set(catalog, "<< /Type /Catalog /Pages " + PdfBuilder::reference(root) + " >>");
    return builder.build(catalog);
}

} // namespace labelled