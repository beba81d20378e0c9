#include "KarvelPDFLibrary/metadata/Xmp.h"

#include "KarvelPDFLibrary/metadata/FreeXml.h"

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QUtil.hh>

namespace karvel::metadata {

namespace {

constexpr const char* rdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

/// Decoded packets beyond this are refused: they are made to fill memory.
constexpr std::size_t largestPacket = 256U << 20U;

QPDFObjectHandle stream(Document& document)
{
    return document.catalogEntry("/Metadata");
}

Result<std::string> packetBytes(Document& document)
{
    QPDFObjectHandle metadata = stream(document);
    if (!metadata.isStream()) {
        return std::string();
    }
    try {
        class Bounded final : public Pipeline {
        public:
            Bounded() : Pipeline("XMP packet", nullptr) {}
            void write(unsigned char const* data, size_t length) override
            {
                if (length > largestPacket - bytes.size()) {
                    throw std::length_error("the packet is too large");
                }
                bytes.append(reinterpret_cast<const char*>(data), length);
            }
            void finish() override {}
            std::string bytes;
        } packet;
        if (!metadata.pipeStreamData(&packet, nullptr, 0, qpdf_dl_generalized)) {
            return fail(ErrorCode::FeatureUnsupported,
                        document.name() + ": the metadata stream cannot be decoded");
        }
        return std::move(packet.bytes);
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name() + ": XMP packet"));
    }
}

using XmlTree = std::unique_ptr<xmlDoc, FreeXml>;

Result<XmlTree> parse(Document& document)
{
    Result<std::string> bytes = packetBytes(document);
    if (!bytes) {
        return tl::unexpected<Error>(bytes.error());
    }
    if (bytes->empty()) {
        return XmlTree();
    }
    // Neither the network nor entities: a packet has no use for them. Errors come as no tree.
    XmlTree tree(xmlReadMemory(bytes->data(), static_cast<int>(bytes->size()), nullptr, nullptr,
                               XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING |
                                   XML_PARSE_NOCDATA));
    if (!tree) {
        return fail(ErrorCode::BadSyntax,
                    document.name() + ": the XMP packet is not well-formed XML");
    }
    return tree;
}

const char* text(const xmlChar* bytes)
{
    return reinterpret_cast<const char*>(bytes);
}

template <class Node>
bool isNamed(const Node& node, const std::string& namespaceUri, const std::string& name)
{
    return node.ns != nullptr && namespaceUri == text(node.ns->href) && name == text(node.name);
}

const xmlNode* firstElement(const xmlNode& parent)
{
    const xmlNode* node = parent.children;
    while (node != nullptr && node->type != XML_ELEMENT_NODE) {
        node = node->next;
    }
    return node;
}

const xmlNode* nextElement(const xmlNode& element)
{
    const xmlNode* node = element.next;
    while (node != nullptr && node->type != XML_ELEMENT_NODE) {
        node = node->next;
    }
    return node;
}

std::string contentOf(const xmlNode& node)
{
    const std::unique_ptr<xmlChar, FreeXml> content(xmlNodeGetContent(&node));
    return content ? text(content.get()) : std::string();
}

std::string valueOf(const xmlAttr& attribute)
{
    return contentOf(reinterpret_cast<const xmlNode&>(attribute));
}

const xmlAttr* attributeOf(const xmlNode& element, const std::string& namespaceUri,
                           const std::string& name)
{
    for (const xmlAttr* attribute = element.properties; attribute != nullptr;
         attribute = attribute->next) {
        if (isNamed(*attribute, namespaceUri, name)) {
            return attribute;
        }
    }
    return nullptr;
}

/// A simple value: text, or the resource that the element names; a qualified one has its value in
/// rdf:value (ISO 16684-1, 7.8).
std::string simpleValue(const xmlNode& element)
{
    if (const xmlAttr* resource = attributeOf(element, rdf, "resource")) {
        return valueOf(*resource);
    }
    const xmlNode* child = firstElement(element);
    if (child == nullptr) {
        return contentOf(element);
    }
    const xmlNode& holder = isNamed(*child, rdf, "Description") ? *child : element;
    for (child = firstElement(holder); child != nullptr; child = nextElement(*child)) {
        if (isNamed(*child, rdf, "value")) {
            return contentOf(*child);
        }
    }
    return {};
}

/// Where a property stands: as an element, or as an attribute of its rdf:Description.
struct Property {
    const xmlNode* element = nullptr;
    const xmlAttr* attribute = nullptr;
};

Property find(const xmlDoc& tree, const PropertyName& name)
{
    const xmlNode* root = xmlDocGetRootElement(&tree);
    if (root != nullptr && !isNamed(*root, rdf, "RDF")) {
        root = firstElement(*root); // x:xmpmeta around it
    }
    if (root == nullptr || !isNamed(*root, rdf, "RDF")) {
        return {};
    }
    for (const xmlNode* description = firstElement(*root); description != nullptr;
         description = nextElement(*description)) {
        if (const xmlAttr* found = attributeOf(*description, name.namespaceUri, name.name)) {
            return {nullptr, found};
        }
        for (const xmlNode* element = firstElement(*description); element != nullptr;
             element = nextElement(*element)) {
            if (isNamed(*element, name.namespaceUri, name.name)) {
                return {element, nullptr};
            }
        }
    }
    return {};
}

std::string simpleText(const xmlDoc& tree, const PropertyName& name)
{
    const Property property = find(tree, name);
    if (property.attribute != nullptr) {
        return valueOf(*property.attribute);
    }
    return property.element != nullptr ? simpleValue(*property.element) : std::string();
}

std::string lowerCase(std::string ascii)
{
    for (char& letter : ascii) {
        letter = letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    }
    return ascii;
}

} // namespace

bool hasXmpPacket(Document& document)
{
    return stream(document).isStream();
}

Result<std::string> xmpPacket(Document& document)
{
    return packetBytes(document).map([](const std::string& bytes) {
        // UTF-16 is told by its byte order mark; everything else that packets may be is UTF-8.
        return QUtil::is_utf16(bytes) ? QUtil::utf16_to_utf8(bytes) : bytes;
    });
}

Result<std::string> xmpProperty(Document& document, const PropertyName& property)
{
    const Result<XmlTree> tree = parse(document);
    if (!tree) {
        return tl::unexpected<Error>(tree.error());
    }
    return *tree ? simpleText(**tree, property) : std::string();
}

Result<std::vector<std::string>> xmpItems(Document& document, const PropertyName& property)
{
    const Result<XmlTree> tree = parse(document);
    if (!tree) {
        return tl::unexpected<Error>(tree.error());
    }
    std::vector<std::string> items;
    const xmlNode* element = *tree ? find(**tree, property).element : nullptr;
    const xmlNode* array = element != nullptr ? firstElement(*element) : nullptr;
    const bool isArray =
        array != nullptr &&
        (isNamed(*array, rdf, "Bag") || isNamed(*array, rdf, "Seq") || isNamed(*array, rdf, "Alt"));
    const xmlNode* item = isArray ? firstElement(*array) : nullptr;
    for (; item != nullptr; item = nextElement(*item)) {
        if (isNamed(*item, rdf, "li")) {
            items.push_back(simpleValue(*item));
        }
    }
    return items;
}

Result<std::vector<std::string>> conformanceClaims(Document& document)
{
    const Result<XmlTree> tree = parse(document);
    if (!tree) {
        return tl::unexpected<Error>(tree.error());
    }
    std::vector<std::string> claims;
    if (!*tree) {
        return claims;
    }
    const std::string archive = "http://www.aiim.org/pdfa/ns/id/";
    const std::string part = simpleText(**tree, {archive, "part"});
    if (!part.empty()) {
        claims.push_back("PDF/A-" + part + lowerCase(simpleText(**tree, {archive, "conformance"})));
    }
    const std::string accessible = simpleText(**tree, {"http://www.aiim.org/pdfua/ns/id/", "part"});
    if (!accessible.empty()) {
        claims.push_back("PDF/UA-" + accessible);
    }
    // These properties hold the name of the conformance itself.
    static const PropertyName named[] = {
        {"http://www.npes.org/pdfx/ns/id/", "GTS_PDFXVersion"},
        {"http://www.npes.org/pdfvt/ns/id/", "GTS_PDFVTVersion"},
        {"http://www.aiim.org/pdfe/ns/id/", "ISO_PDFEVersion"},
    };
    for (const PropertyName& property : named) {
        const std::string claim = simpleText(**tree, property);
        if (!claim.empty()) {
            claims.push_back(claim);
        }
    }
    return claims;
}

} // namespace karvel::metadata
