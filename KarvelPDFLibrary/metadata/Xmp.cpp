#include "KarvelPDFLibrary/metadata/Xmp.h"

#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/QUtil.hh>

namespace karvel::metadata {

namespace {

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

/// The document's packet, read; null when it has none.
Result<std::unique_ptr<xmp::Packet>> parsed(Document& document)
{
    using Packet = std::unique_ptr<xmp::Packet>;
    return packetBytes(document).and_then([&](const std::string& bytes) -> Result<Packet> {
        if (bytes.empty()) {
            return Packet();
        }
        const Result<xmp::PacketReader*> reader = xmp::loadedReader();
        if (!reader) {
            return tl::unexpected<Error>(reader.error());
        }
        Packet packet = (*reader)->read(bytes);
        if (!packet) {
            return fail(ErrorCode::BadSyntax,
                        document.name() + ": the XMP packet is not well-formed XML");
        }
        return packet;
    });
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
    return parsed(document).map([&](const std::unique_ptr<xmp::Packet>& packet) {
        return packet ? packet->text(property) : std::string();
    });
}

Result<std::vector<std::string>> xmpItems(Document& document, const PropertyName& property)
{
    return parsed(document).map([&](const std::unique_ptr<xmp::Packet>& packet) {
        return packet ? packet->items(property) : std::vector<std::string>();
    });
}

Result<std::vector<std::string>> conformanceClaims(Document& document)
{
    const Result<std::unique_ptr<xmp::Packet>> parsedPacket = parsed(document);
    if (!parsedPacket) {
        return tl::unexpected<Error>(parsedPacket.error());
    }
    std::vector<std::string> claims;
    const xmp::Packet* packet = parsedPacket->get();
    if (packet == nullptr) {
        return claims;
    }
    const std::string archive = "http://www.aiim.org/pdfa/ns/id/";
    const std::string part = packet->text({archive, "part"});
    if (!part.empty()) {
        claims.push_back("PDF/A-" + part + lowerCase(packet->text({archive, "conformance"})));
    }
    const std::string accessible = packet->text({"http://www.aiim.org/pdfua/ns/id/", "part"});
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
        const std::string claim = packet->text(property);
        if (!claim.empty()) {
            claims.push_back(claim);
        }
    }
    return claims;
}

} // namespace karvel::metadata
