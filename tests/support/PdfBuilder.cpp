#include "tests/support/PdfBuilder.h"

#include <cstdio>

namespace support {

int PdfBuilder::reserve()
{
    return ++last_;
}

void PdfBuilder::set(int number, std::string body)
{
    objects_[number] = std::move(body);
}

int PdfBuilder::add(std::string body)
{
    const int number = reserve();
    set(number, std::move(body));
    return number;
}

int PdfBuilder::addStream(const std::string& data, const std::string& entries)
{
    const int number = reserve();
    setStream(number, data, entries);
    return number;
}

void PdfBuilder::setStream(int number, const std::string& data, const std::string& entries)
{
    set(number, "<< /Length " + std::to_string(data.size()) + " " + entries + " >>\nstream\n" +
                    data + "\nendstream");
}

std::string PdfBuilder::build(int catalog) const
{
    std::string file = "%PDF-1.7\n%\xe2\xe3\xcf\xd3\n";
    std::vector<std::size_t> offsets(static_cast<std::size_t>(last_) + 1, 0);
    for (const auto& [number, body] : objects_) {
        offsets[static_cast<std::size_t>(number)] = file.size();
        file += std::to_string(number) + " 0 obj\n" + body + "\nendobj\n";
    }
    const std::size_t start = file.size();
    file += "xref\n0 " + std::to_string(last_ + 1) + "\n0000000000 65535 f \n";
    for (int number = 1; number <= last_; ++number) {
        const std::size_t offset = offsets[static_cast<std::size_t>(number)];
        file += offset == 0 ? "0000000000 65535 f \n" : tableRow(offset);
    }
    file += "trailer\n<< /Size " + std::to_string(last_ + 1) + " /Root " + reference(catalog) +
            " " + trailerEntries_ + " >>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
    return file;
}

std::string PdfBuilder::tableRow(std::size_t offset)
{
    char row[32];
    std::snprintf(row, sizeof row, "%010zu 00000 n \n", offset);
    return row;
}

std::string showText(const std::string& text)
{
    return "BT /F1 24 Tf 72 700 Td (" + text + ") Tj ET";
}

PagedDocument::PagedDocument(int count, const std::string& pageEntries)
{
    catalog = builder.reserve();
    root = builder.reserve();
    const int font = builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    std::string kids;
    for (int number = 1; number <= count; ++number) {
        const int contents = builder.addStream(showText("Page " + std::to_string(number)));
        const int page =
            builder.add("<< /Type /Page /Parent " + PdfBuilder::reference(root) +
                        " /MediaBox [0 0 612 792] /Contents " + PdfBuilder::reference(contents) +
                        " /Resources << /Font << /F1 " + PdfBuilder::reference(font) + " >> >> " +
                        pageEntries + " >>");
        pages.push_back(page);
        kids += PdfBuilder::reference(page) + " ";
    }
    builder.set(root,
                "<< /Type /Pages /Count " + std::to_string(count) + " /Kids [" + kids + "] >>");
}

std::string PagedDocument::build()
{
    builder.set(catalog, "<< /Type /Catalog /Pages " + PdfBuilder::reference(root) + " " +
                             catalogEntries + " >>");
    return builder.build(catalog);
}

std::string documentOfPages(int count)
{
    return PagedDocument(count).build();
}

} // namespace support
