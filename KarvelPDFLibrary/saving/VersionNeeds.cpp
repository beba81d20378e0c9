#include "KarvelPDFLibrary/saving/VersionNeeds.h"

#include <algorithm>
#include <sstream>

namespace karvel::saving {

namespace {

/// What the standard security handler needs (ISO 32000-2, 7.6.2 and 7.6.4).
PDFVersion neededByEncryption(Document& document, const EncryptionPlan& plan)
{
    if (plan.kind == EncryptionPlan::Kind::Replace) {
        switch (plan.replacement->algorithm) {
        case EncryptionAlgorithm::Rc4Bits128:
            return PDFVersion(1, 4);
        case EncryptionAlgorithm::AesBits128:
            return PDFVersion(1, 6);
        default:
            return PDFVersion(1, 7, 8);
        }
    }
    int revision = 0;
    int bits = 0;
    if (plan.kind == EncryptionPlan::Kind::Remove || !document.file().isEncrypted(revision, bits)) {
        return PDFVersion(1, 3);
    }
    if (revision >= 5) {
        return PDFVersion(1, 7, revision == 5 ? 3 : 8);
    }
    if (revision == 4) {
        return PDFVersion(1, 6);
    }
    return revision == 3 ? PDFVersion(1, 4) : PDFVersion(1, 3);
}

/// A version such as "1.7"; 1.3 for anything else, as libqpdf takes it. Its own
/// getVersionAsPDFVersion() compiles a regular expression at each call.
PDFVersion versionIn(const std::string& text, int extensionLevel = 0)
{
    int major = 1;
    int minor = 3;
    std::istringstream stream(text);
    stream >> major;
    stream.ignore(1); // the point
    stream >> minor;
    return stream ? PDFVersion(major, minor, extensionLevel) : PDFVersion(1, 3, extensionLevel);
}

} // namespace

bool readsObjectStreams(QPDF& file)
{
    const auto table = file.getXRefTable();
    return std::any_of(table.begin(), table.end(),
                       [](const auto& entry) { return entry.second.getType() == 2; });
}

bool hasObjectStreams(Document& document)
{
    return document.index() != nullptr ? !document.index()->objectStreams().empty()
                                       : readsObjectStreams(document.file());
}

PDFVersion versionToWrite(Document& document, const SaveOptions& options,
                          const EncryptionPlan& encryption)
{
    PDFVersion version = versionIn(document.forcedVersion);
    version.updateIfGreater(neededByEncryption(document, encryption));
    const bool packs = options.objectStreams == ObjectStreams::Pack ||
                       (options.objectStreams == ObjectStreams::Keep && hasObjectStreams(document));
    if (packs && !options.readable) {
        version.updateIfGreater(PDFVersion(1, 5));
    }
    return version;
}

std::string versionToCopy(Document& document)
{
    std::string text;
    PDFVersion version;
    if (const Roots* roots = document.roots(); roots && !roots->catalogHas("Extensions")) {
        text = roots->version();
        version = versionIn(text);
    } else {
        text = document.file().getPDFVersion();
        version = versionIn(text, document.file().getExtensionLevel());
    }
    const PDFVersion before = version;
    if (document.index()->usesCrossReferenceStream()) {
        version.updateIfGreater(PDFVersion(1, 5));
    }
    if (before < version) {
        int extensionLevel = 0;
        version.getVersion(text, extensionLevel);
    }
    return text;
}

} // namespace karvel::saving
