#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// XMP packets as XML (ISO 16684-1): libxml2, in a module of its own that is loaded when the first
/// packet is read. Texts are UTF-8.
namespace karvel::xmp {

/// Names a property: its namespace's URI and its name.
struct PropertyName {
    std::string namespaceUri;
    std::string name;
};

/// The namespace of pictures in a packet.
constexpr char pictures[] = "http://ns.adobe.com/xap/1.0/g/img/";

/// A packet that has been read.
class Packet {
public:
    virtual ~Packet() = default;

    /// A simple property's text; empty when it is absent or no simple one.
    virtual std::string text(const PropertyName& property) const = 0;

    /// The items of an array property, none when it is absent or no array.
    virtual std::vector<std::string> items(const PropertyName& property) const = 0;
};

class PacketReader {
public:
    /// Null when the bytes are not well-formed XML.
    virtual std::unique_ptr<Packet> read(const std::string& bytes) = 0;

    /// xmp::withoutPreviews of the module.
    virtual std::optional<std::string> withoutPreviews(const std::string& packet) = 0;

protected:
    ~PacketReader() = default;
};

/// The module's one reader, which is loaded at the first call. May be called from any thread.
Result<PacketReader*> loadedReader();

} // namespace karvel::xmp
