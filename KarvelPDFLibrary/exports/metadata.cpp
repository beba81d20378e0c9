#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/exports/Lines.h"
#include "KarvelPDFLibrary/metadata/Identifier.h"
#include "KarvelPDFLibrary/metadata/Information.h"
#include "KarvelPDFLibrary/metadata/Xmp.h"
#include "exports.h"

#include <optional>

using namespace karvel;
using boundary::onDocument;

namespace {

Outcome isEntry(int entry)
{
    if (entry < 1 || entry > metadata::entryCount) {
        return fail(ErrorCode::BadArgument, "the information entry must be 1 to 8");
    }
    return {};
}

metadata::PropertyName takeProperty(Instance& self, const wchar_t* namespaceUri,
                                    const wchar_t* property)
{
    std::string uri = boundary::takeWide(self, namespaceUri);
    return {std::move(uri), boundary::takeWide(self, property)};
}

} // namespace

wchar_t* KPLGetDocumentInformation(int instance, int entry)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return isEntry(entry).map([&] {
                return metadata::information(document, static_cast<metadata::Entry>(entry));
            });
        });
    });
}

int KPLSetDocumentInformation(int instance, int entry, const wchar_t* value)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string text = boundary::takeWide(self, value);
        return onDocument(self, [&](Document& document) {
            return isEntry(entry).and_then([&] {
                return metadata::setInformation(document, static_cast<metadata::Entry>(entry),
                                                text);
            });
        });
    });
}

int KPLInformationEntryCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(metadata::informationKeys(document).size());
        });
    });
}

wchar_t* KPLGetInformationKey(int instance, int index)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Result<std::string> {
            const std::vector<std::string> keys = metadata::informationKeys(document);
            if (index < 1 || static_cast<std::size_t>(index) > keys.size()) {
                return fail(ErrorCode::NotFound, document.name() +
                                                     ": the information dictionary has no entry " +
                                                     std::to_string(index));
            }
            return keys[static_cast<std::size_t>(index) - 1];
        });
    });
}

wchar_t* KPLGetCustomInformation(int instance, const wchar_t* key)
{
    return boundary::wideString(instance, [&](Instance& self) {
        const std::string name = boundary::takeWide(self, key);
        return onDocument(self, [&](Document& document) -> Result<std::string> {
            return metadata::customInformation(document, name);
        });
    });
}

int KPLSetCustomInformation(int instance, const wchar_t* key, const wchar_t* value)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string name = boundary::takeWide(self, key);
        const std::string text = boundary::takeWide(self, value);
        return onDocument(self, [&](Document& document) {
            return metadata::setCustomInformation(document, name, text);
        });
    });
}

int KPLRemoveCustomInformation(int instance, const wchar_t* key)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string name = boundary::takeWide(self, key);
        return onDocument(self, [&](Document& document) {
            return metadata::removeCustomInformation(document, name);
        });
    });
}

int KPLRemoveInformation(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Outcome {
            metadata::removeInformation(document);
            return {};
        });
    });
}

int KPLSetInformationDate(int instance, int entry, int year, int month, int day, int hour,
                          int minute, int second, int utcOffset)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return isEntry(entry).and_then([&] {
                return metadata::setInformationDate(
                    document, static_cast<metadata::Entry>(entry),
                    {year, month, day, hour, minute, second, utcOffset});
            });
        });
    });
}

int KPLTrappedState(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return static_cast<int>(metadata::trapped(document));
        });
    });
}

int KPLSetTrappedState(int instance, int state)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Outcome {
            if (state < 0 || state > 2) {
                return fail(ErrorCode::BadArgument, "the state must be 0 to 2");
            }
            return metadata::setTrapped(document, static_cast<metadata::Trapped>(state));
        });
    });
}

wchar_t* KPLGetFileIdentifier(int instance, int part)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Result<std::string> {
            if (part != 1 && part != 2) {
                return fail(ErrorCode::BadArgument, "the part must be 1 or 2");
            }
            return metadata::fileIdentifier(document, static_cast<metadata::IdentifierPart>(part));
        });
    });
}

int KPLHasXmpPacket(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            return metadata::hasXmpPacket(document);
        });
    });
}

wchar_t* KPLXmpPacket(int instance)
{
    return boundary::wideString(
        instance, [](Instance& self) { return onDocument(self, metadata::xmpPacket); });
}

wchar_t* KPLGetXmpProperty(int instance, const wchar_t* namespaceUri, const wchar_t* property)
{
    return boundary::wideString(instance, [&](Instance& self) {
        const metadata::PropertyName name = takeProperty(self, namespaceUri, property);
        return onDocument(
            self, [&](Document& document) { return metadata::xmpProperty(document, name); });
    });
}

int KPLCountXmpItems(int instance, const wchar_t* namespaceUri, const wchar_t* property)
{
    return boundary::integer(instance, [&](Instance& self) {
        const metadata::PropertyName name = takeProperty(self, namespaceUri, property);
        return onDocument(self, [&](Document& document) {
            return metadata::xmpItems(document, name).map([](const auto& items) {
                return static_cast<int>(items.size());
            });
        });
    });
}

wchar_t* KPLGetXmpItem(int instance, const wchar_t* namespaceUri, const wchar_t* property,
                       int index)
{
    return boundary::wideString(instance, [&](Instance& self) {
        const metadata::PropertyName name = takeProperty(self, namespaceUri, property);
        return onDocument(self, [&](Document& document) -> Result<std::string> {
            const auto items = metadata::xmpItems(document, name);
            if (!items) {
                return tl::unexpected<Error>(items.error());
            }
            if (index < 1 || static_cast<std::size_t>(index) > items->size()) {
                return fail(ErrorCode::NotFound, document.name() + ": the XMP property " +
                                                     name.name + " has no item " +
                                                     std::to_string(index));
            }
            return (*items)[static_cast<std::size_t>(index) - 1];
        });
    });
}

wchar_t* KPLConformanceClaim(int instance)
{
    return boundary::wideString(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) {
            return metadata::conformanceClaims(document).map(boundary::lines);
        });
    });
}
