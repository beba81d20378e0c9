#include "KarvelPDFLibrary/xmp/FreeXml.h"
#include "KarvelPDFLibrary/xmp/Packets.h"
#include "KarvelPDFLibrary/xmp/Previews.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

namespace karvel::xmp {

namespace {

constexpr const char* rdf = "http://www.w3.org/1999/02/22-rdf-syntax-ns#";

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

class XmlPacket final : public Packet {
public:
    explicit XmlPacket(std::unique_ptr<xmlDoc, FreeXml> tree) : tree_(std::move(tree)) {}

    std::string text(const PropertyName& name) const override
    {
        const Property property = find(*tree_, name);
        if (property.attribute != nullptr) {
            return valueOf(*property.attribute);
        }
        return property.element != nullptr ? simpleValue(*property.element) : std::string();
    }

    std::vector<std::string> items(const PropertyName& name) const override
    {
        std::vector<std::string> items;
        const xmlNode* element = find(*tree_, name).element;
        const xmlNode* array = element != nullptr ? firstElement(*element) : nullptr;
        const bool isArray =
            array != nullptr && (isNamed(*array, rdf, "Bag") || isNamed(*array, rdf, "Seq") ||
                                 isNamed(*array, rdf, "Alt"));
        const xmlNode* item = isArray ? firstElement(*array) : nullptr;
        for (; item != nullptr; item = nextElement(*item)) {
            if (isNamed(*item, rdf, "li")) {
                items.push_back(simpleValue(*item));
            }
        }
        return items;
    }

private:
    std::unique_ptr<xmlDoc, FreeXml> tree_;
};

class XmlReader final : public PacketReader {
public:
    std::unique_ptr<Packet> read(const std::string& bytes) override
    {
        // Neither the network nor entities: a packet has no use for them. Errors come as no tree.
        std::unique_ptr<xmlDoc, FreeXml> tree(xmlReadMemory(
            bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
            XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NOCDATA));
        return tree ? std::make_unique<XmlPacket>(std::move(tree)) : nullptr;
    }

    std::optional<std::string> withoutPreviews(const std::string& packet) override
    {
        return xmp::withoutPreviews(packet);
    }
};

} // namespace

} // namespace karvel::xmp

extern "C" __attribute__((visibility("default"))) karvel::xmp::PacketReader* karvelModule()
{
    static karvel::xmp::XmlReader reader;
    return &reader;
}
