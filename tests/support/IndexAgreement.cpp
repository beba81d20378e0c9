#include "tests/support/IndexAgreement.h"

namespace support {

namespace {

/// What libqpdf takes an object for that the index has, unless it is the same.
std::string disagreementOn(QPDFObjectHandle object, const karvel::index::IndexedObject& entry)
{
    const bool isStream = (entry.flags & karvel::index::IsStream) != 0;
    const bool isDictionary = !isStream && (entry.flags & karvel::index::IsDictionary) != 0;
    auto last = static_cast<std::uint64_t>(object.getParsedOffset());
    if (object.isStream() != isStream || object.isDictionary() != isDictionary) {
        return "is something else";
    }
    if (isStream) {
        last += object.getRawStreamData()->getSize();
    }
    return last < entry.start || last > entry.end
               ? "ends at " + std::to_string(last) + ", not between " +
                     std::to_string(entry.start) + " and " + std::to_string(entry.end)
               : "";
}

} // namespace

std::string indexDisagreement(karvel::Document& document)
{
    const karvel::index::ReferenceIndex* index = document.index();
    for (std::uint32_t number = 1; index != nullptr && number < index->size(); ++number) {
        const karvel::index::IndexedObject* entry =
            document.objects().unchanged(static_cast<int>(number));
        if (entry == nullptr) {
            continue; // not there, or taken from libqpdf
        }
        const std::string how = disagreementOn(
            document.file().getObject(static_cast<int>(number), entry->generation), *entry);
        if (!how.empty()) {
            return "object " + std::to_string(number) + " " + how;
        }
    }
    return {};
}

} // namespace support
