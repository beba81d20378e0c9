#include "KarvelPDFLibrary/metadata/XmpPreviews.h"

#include "KarvelPDFLibrary/metadata/FreeXml.h"

#include <algorithm>
#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <memory>
#include <vector>

namespace karvel::metadata {

namespace {

constexpr char basicSchema[] = "http://ns.adobe.com/xap/1.0/";
constexpr char pictures[] = "http://ns.adobe.com/xap/1.0/g/img/";

bool isNamed(const xmlNode& node, const char* schema, const char* name)
{
    const auto same = [](const xmlChar* text, const char* other) {
        return text != nullptr && std::strcmp(reinterpret_cast<const char*>(text), other) == 0;
    };
    return node.type == XML_ELEMENT_NODE && node.ns != nullptr && same(node.ns->href, schema) &&
           same(node.name, name);
}

bool isPreview(const xmlNode& node)
{
    return isNamed(node, basicSchema, "Thumbnails") || isNamed(node, pictures, "image");
}

std::vector<xmlNode*> previewsIn(xmlDoc& tree)
{
    std::vector<xmlNode*> found;
    std::vector<xmlNode*> open = {xmlDocGetRootElement(&tree)};
    while (!open.empty()) {
        xmlNode* node = open.back();
        open.pop_back();
        if (node == nullptr) {
            continue;
        }
        open.push_back(node->next);
        if (isPreview(*node)) {
            found.push_back(node);
        } else if (node->type == XML_ELEMENT_NODE) {
            open.push_back(node->children);
        }
    }
    return found;
}

std::string text(xmlDoc& tree, bool isDeclared)
{
    const std::unique_ptr<xmlBuffer, FreeXml> buffer(xmlBufferCreate());
    const char* encoding = tree.encoding != nullptr
                               ? reinterpret_cast<const char*>(tree.encoding)
                               : "UTF-8"; // what a packet is that says nothing else
    xmlSaveCtxt* saving =
        xmlSaveToBuffer(buffer.get(), encoding, isDeclared ? 0 : XML_SAVE_NO_DECL);
    if (saving == nullptr) {
        throw std::bad_alloc();
    }
    xmlSaveDoc(saving, &tree);
    xmlSaveClose(saving);
    return {reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
            static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

} // namespace

bool mayHavePreviews(const std::string& packet)
{
    std::string letters = packet; // of UTF-16 and UTF-32 as well
    letters.erase(std::remove(letters.begin(), letters.end(), '\0'), letters.end());
    return letters.find("Thumbnails") != std::string::npos ||
           letters.find(pictures) != std::string::npos || letters.find("&#") != std::string::npos;
}

std::optional<std::string> withoutPreviews(const std::string& packet)
{
    const std::unique_ptr<xmlDoc, FreeXml> tree(
        xmlReadMemory(packet.data(), static_cast<int>(packet.size()), nullptr, nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (!tree) {
        return std::nullopt;
    }
    const std::vector<xmlNode*> previews = previewsIn(*tree);
    if (previews.empty()) {
        return packet;
    }
    for (xmlNode* preview : previews) {
        xmlUnlinkNode(preview);
        xmlFreeNode(preview);
    }
    return text(*tree, packet.find("<?xml ") != std::string::npos);
}

} // namespace karvel::metadata
