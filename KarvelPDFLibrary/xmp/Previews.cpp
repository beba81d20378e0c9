#include "KarvelPDFLibrary/xmp/Previews.h"

#include "KarvelPDFLibrary/xmp/FreeXml.h"
#include "KarvelPDFLibrary/xmp/Packets.h"

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>
#include <memory>
#include <vector>

namespace karvel::xmp {

namespace {

constexpr char basicSchema[] = "http://ns.adobe.com/xap/1.0/";

bool isElement(const xmlNode& node, const char* schema, const char* name)
{
    const auto same = [](const xmlChar* text, const char* other) {
        return text != nullptr && std::strcmp(reinterpret_cast<const char*>(text), other) == 0;
    };
    return node.type == XML_ELEMENT_NODE && node.ns != nullptr && same(node.ns->href, schema) &&
           same(node.name, name);
}

bool isPreview(const xmlNode& node)
{
    return isElement(node, basicSchema, "Thumbnails") || isElement(node, pictures, "image");
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

std::string textOf(xmlDoc& tree, bool isDeclared)
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
    return textOf(*tree, packet.find("<?xml ") != std::string::npos);
}

} // namespace karvel::xmp
