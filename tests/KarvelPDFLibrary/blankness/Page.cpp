#include "tests/KarvelPDFLibrary/blankness/Page.h"

namespace labelled {

using support::PdfBuilder;

std::string numbers(std::initializer_list<double> values)
{
    std::string text;
    for (const double value : values) {
        text += std::to_string(value) + " ";
    }
    return text;
}

std::string textAt(Random& random, double size, const std::string& before, const std::string& text)
{
    return "BT " + before + " /F1 " + std::to_string(size) + " Tf " +
           numbers({random.between(20, 180), random.between(20, 380)}) + "Td (" + text + ") Tj ET ";
}

void annotate(Page& page, const std::string& appearance, const std::string& entries)
{
    const int form =
        page.builder.addStream(appearance, "/Type /XObject /Subtype /Form /BBox [0 0 60 30]");
    page.annotations += PdfBuilder::reference(page.builder.add(
                            "<< /Type /Annot /Rect [100 200 160 230] /AP << /N " +
                            PdfBuilder::reference(form) + " >> " + entries + " >>")) +
                        " ";
}

} // namespace labelled
