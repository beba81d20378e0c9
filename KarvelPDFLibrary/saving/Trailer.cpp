#include "KarvelPDFLibrary/saving/Trailer.h"

#include "KarvelPDFLibrary/saving/EscapedNames.h"
#include "KarvelPDFLibrary/saving/ObjectText.h"

#include <algorithm>
#include <nettle/md5.h>
#include <random>

namespace karvel::saving {

namespace {

/// Trailer entries that describe the file as it was.
bool describesOldFile(const std::string& key)
{
    static const char* const keys[] = {
        "/Prev",   "/XRefStm", "/Size",        "/ID", "/W", "/Index",   "/Type",
        "/Length", "/Filter",  "/DecodeParms", "/DL", "/F", "/FFilter", "/FDecodeParms"};
    return std::any_of(std::begin(keys), std::end(keys),
                       [&](const char* old) { return key == old; });
}

} // namespace

struct FileIdentifier::Digest {
    md5_ctx context = {};
};

FileIdentifier::FileIdentifier(bool deterministic)
    : digest_(deterministic ? std::make_unique<Digest>() : nullptr)
{
    if (digest_) {
        md5_init(&digest_->context);
    }
}

FileIdentifier::~FileIdentifier() = default;

void FileIdentifier::written(const std::string& text)
{
    if (digest_) {
        md5_update(&digest_->context, text.size(),
                   reinterpret_cast<const std::uint8_t*>(text.data()));
    }
}

void FileIdentifier::copied(std::uint64_t start, std::uint64_t end)
{
    const std::uint64_t range[] = {start, end};
    if (digest_) {
        md5_update(&digest_->context, sizeof range, reinterpret_cast<const std::uint8_t*>(range));
    }
}

std::string FileIdentifier::entry(Document& document) const
{
    std::string changing(16, '\0');
    if (digest_) {
        md5_ctx context = digest_->context;
        md5_digest(&context, changing.size(), reinterpret_cast<std::uint8_t*>(changing.data()));
    } else {
        std::random_device random;
        std::generate(changing.begin(), changing.end(),
                      [&] { return static_cast<char>(random()); });
    }
    QPDFObjectHandle old = QPDFObjectHandle::newNull();
    const Roots::Entry* known =
        document.roots() == nullptr ? nullptr : document.roots()->inTrailer("/ID");
    if (known != nullptr && !known->reference) {
        old = known->direct;
    } else {
        old = document.trailerEntry("/ID");
    }
    const bool hasOld =
        old.isArray() && old.getArrayNItems() == 2 && old.getArrayItem(0).isString();
    const std::string permanent = hasOld ? old.getArrayItem(0).getStringValue() : changing;
    return "/ID [" + QPDFObjectHandle::newString(permanent).unparseBinary() +
           QPDFObjectHandle::newString(changing).unparseBinary() + "]";
}

std::string trailerEntries(Document& document, const Renumbering* numbers)
{
    std::string entries;
    if (const Roots* roots = document.roots(); roots != nullptr && numbers == nullptr) {
        for (const Roots::Entry& entry : roots->trailer()) {
            if (!describesOldFile(entry.key)) {
                entries += " " + nameText(entry.key) + " " +
                           (entry.reference ? entry.reference->unparse(' ') + " R"
                                            : objectText(entry.direct, nullptr));
            }
        }
        return entries;
    }
    for (const auto& [key, value] : document.file().getTrailer().getDictAsMap()) {
        if (!describesOldFile(key)) {
            QPDFObjectHandle entry = value;
            entries += " " + nameText(key) + " ";
            if (entry.isIndirect()) {
                entries += numbers != nullptr ? numbers->reference(entry) : entry.unparse();
            } else {
                entries += objectText(entry, nullptr, numbers);
            }
        }
    }
    return entries;
}

} // namespace karvel::saving
