#include "tests/support/Sketch.h"

#include "tests/support/PdfBuilder.h"

#include <cctype>
#include <gtest/gtest.h>
#include <map>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <sstream>

namespace support {

namespace {

std::string filledIn(const std::string& text, const std::map<std::string, int>& numbers)
{
    std::string filled;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '@') {
            filled += text[at++];
            continue;
        }
        std::size_t end = at + 1;
        while (end < text.size() && std::isalnum(static_cast<unsigned char>(text[end])) != 0) {
            ++end;
        }
        const std::string name = text.substr(at + 1, end - at - 1);
        EXPECT_EQ(numbers.count(name), 1U) << "no object is called " << name;
        filled += PdfBuilder::reference(numbers.count(name) == 0 ? 0 : numbers.at(name));
        at = end;
    }
    return filled;
}

void open(QPDF& file, const std::string& pdf, const std::string& password)
{
    file.setSuppressWarnings(true);
    file.processMemoryFile("document", pdf.data(), pdf.size(), password.c_str());
}

std::string shown(QPDF& file, QPDFObjectHandle value)
{
    if (value.isNull()) {
        return "nothing";
    }
    if (value.isDictionaryOfType("/Page")) {
        int number = 0;
        for (auto& page : file.getAllPages()) {
            ++number;
            if (page.getObjGen() == value.getObjGen()) {
                return "page " + std::to_string(number);
            }
        }
        return "a page outside the page tree";
    }
    if (value.isArray()) {
        return "array " + std::to_string(value.getArrayNItems());
    }
    if (value.isStream()) {
        return "stream";
    }
    return value.isDictionary() ? "dictionary" : value.unparseResolved();
}

void collect(const QPDFObjectHandle& object, std::string& text)
{
    std::vector<QPDFObjectHandle> open = {object};
    for (bool outermost = true; !open.empty(); outermost = false) {
        QPDFObjectHandle part = open.back();
        open.pop_back();
        if (part.isIndirect() && !outermost) {
            continue;
        }
        if (part.isStream()) {
            // What a filter hides that libqpdf does not know stays hidden here too.
            const auto data = part.isDataModified() || part.pipeStreamData(nullptr, 0, qpdf_dl_all)
                                  ? part.getStreamData(qpdf_dl_all)
                                  : part.getRawStreamData();
            text.append(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
            text += '\n';
            part = part.getDict();
        }
        if (part.isArray()) {
            for (const QPDFObjectHandle& item : part.getArrayAsVector()) {
                open.push_back(item);
            }
        } else if (part.isDictionary()) {
            for (const auto& [key, value] : part.getDictAsMap()) {
                text += key + '\n';
                open.push_back(value);
            }
        } else if (part.isString()) {
            text += part.getUTF8Value() + '\n' + part.getStringValue() + '\n';
        } else if (part.isName()) {
            text += part.getName() + '\n';
        }
    }
}

} // namespace

std::string Sketch::built() const
{
    PdfBuilder builder;
    std::map<std::string, int> numbers;
    const int catalogNumber = builder.reserve();
    const int root = builder.reserve();
    numbers["pages"] = root;
    const int font = builder.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const std::string fonts =
        "/Resources << /Font << /F1 " + PdfBuilder::reference(font) + " >> >>";
    std::string kids;
    for (std::size_t i = 1; i <= pages.size(); ++i) {
        const int page = builder.reserve();
        numbers["p" + std::to_string(i)] = page;
        kids += PdfBuilder::reference(page) + " ";
    }
    for (const auto& [name, text] : objects) {
        numbers[name] = builder.reserve();
    }
    for (std::size_t i = 1; i <= pages.size(); ++i) {
        const std::string name = std::to_string(i);
        const auto has = [&](const char* entry) {
            return pages[i - 1].find(entry) != std::string::npos;
        };
        std::string entries = "/Type /Page " + filledIn(pages[i - 1], numbers);
        if (!has("/Contents @") && !has("/Contents [@")) {
            const int content = builder.addStream(showText("Page " + name));
            entries += " /Contents " + PdfBuilder::reference(content);
        }
        const bool inherits = has("/Parent @");
        if (!inherits) {
            entries += " /Parent " + PdfBuilder::reference(root);
        }
        for (const auto& [key, entry] :
             {std::pair("/MediaBox", std::string("/MediaBox [0 0 612 792]")),
              std::pair("/Resources", fonts)}) {
            if (!inherits && !has(key) && tree.find(key) == std::string::npos) {
                entries += " " + entry;
            }
        }
        builder.set(numbers["p" + name], "<< " + entries + " >>");
    }
    for (const auto& [name, text] : objects) {
        const std::size_t bar = text.find('|');
        if (bar == std::string::npos) {
            builder.set(numbers[name], filledIn(text, numbers));
        } else {
            builder.setStream(numbers[name], text.substr(bar + 1),
                              filledIn(text.substr(0, bar), numbers));
        }
    }
    const bool isWhole = tree.find("/Kids") != std::string::npos;
    builder.set(root, "<< " +
                          (isWhole ? ""
                                   : "/Type /Pages /Count " + std::to_string(pages.size()) +
                                         " /Kids [" + kids + "] ") +
                          filledIn(tree, numbers) + " >>");
    builder.set(catalogNumber, "<< /Type /Catalog /Pages " + PdfBuilder::reference(root) + " " +
                                   filledIn(catalog, numbers) + " >>");
    return builder.build(catalogNumber);
}

std::string valueAt(const std::string& pdf, const std::string& path, const std::string& password)
{
    QPDF file;
    open(file, pdf, password);
    std::istringstream steps(path);
    std::string step;
    std::getline(steps, step, '/');
    QPDFObjectHandle at;
    if (step == "Root") {
        at = file.getRoot();
    } else {
        const auto number = static_cast<std::size_t>(std::stoi(step.substr(1)));
        const auto& pages = file.getAllPages();
        at = number <= pages.size() ? pages.at(number - 1) : QPDFObjectHandle::newNull();
    }
    while (std::getline(steps, step, '/')) {
        if (at.isStream()) {
            at = at.getDict();
        }
        if (at.isArray() && std::isdigit(static_cast<unsigned char>(step[0])) != 0) {
            const int index = std::stoi(step);
            at = index < at.getArrayNItems() ? at.getArrayItem(index) : QPDFObjectHandle::newNull();
        } else {
            at = at.isDictionary() ? at.getKey("/" + step) : QPDFObjectHandle::newNull();
        }
    }
    return shown(file, at);
}

std::string everythingIn(const std::string& pdf, const std::string& password)
{
    QPDF file;
    open(file, pdf, password);
    std::string text;
    for (const QPDFObjectHandle& object : file.getAllObjects()) {
        collect(object, text);
    }
    for (const auto& [key, value] : file.getTrailer().getDictAsMap()) {
        if (!value.isIndirect()) {
            collect(value, text);
        }
    }
    return text;
}

} // namespace support
