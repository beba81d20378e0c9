#include "KarvelPDFLibrary/document/Document.h"

#include "KarvelPDFLibrary/document/Linearization.h"
#include "KarvelPDFLibrary/document/Version.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "exports.h"

#include <algorithm>
#include <climits>

using namespace karvel;
using boundary::onDocument;
using boundary::onOpenDocument;

namespace {

Result<int> load(Instance& self, Result<std::shared_ptr<io::ByteSource>> source,
                 const std::string& path, const std::string& password)
{
    if (!source) {
        return tl::unexpected<Error>(source.error());
    }
    auto document = Document::load(*source, {password, self.reconstruct, self.salvage});
    if (!document) {
        return tl::unexpected<Error>(document.error());
    }
    (*document)->setPath(path);
    return self.documents.add(std::move(*document));
}

/// After saving, which may have left out pages that can't be read (SetReconstruction).
template <class Saved>
Saved keepingSelectionWithin(OpenDocument& open, Saved saved)
{
    open.selectedPage = std::min(open.selectedPage, open.document->pageCount());
    return saved;
}

/// Sets a setting whose codes run from 0 to `largest`.
template <class Setting>
Outcome setCode(Setting& setting, int code, int largest)
{
    if (code < 0 || code > largest) {
        return fail(ErrorCode::BadArgument, "the value must be 0 to " + std::to_string(largest));
    }
    setting = static_cast<Setting>(code);
    return {};
}

} // namespace

int KPLNewDocument(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        auto document = Document::create();
        if (!document) {
            return tl::unexpected<Error>(document.error());
        }
        return self.documents.add(std::move(*document));
    });
}

int KPLLoadFromFile(int instance, const wchar_t* path, const wchar_t* password)
{
    return boundary::integer(instance, [&](Instance& self) -> Result<int> {
        const std::string file = boundary::takeWide(self, path);
        const std::string secret = boundary::takeWide(self, password);
        return load(self, io::openFile(file), file, secret);
    });
}

int KPLLoadFromString(int instance, const char* data, const wchar_t* password)
{
    return boundary::integer(instance, [&](Instance& self) -> Result<int> {
        const std::string secret = boundary::takeWide(self, password);
        return load(self, io::fromMemory(boundary::bytesOf(self, data)), {}, secret);
    });
}

int KPLDocumentCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        return static_cast<int>(self.documents.all().size());
    });
}

int KPLGetDocumentHandle(int instance, int index)
{
    return boundary::integer(instance, [&](Instance& self) -> Result<int> {
        const auto& all = self.documents.all();
        if (index < 1 || index > static_cast<int>(all.size())) {
            return fail(ErrorCode::NotFound,
                        "no open document has the index " + std::to_string(index));
        }
        return all[static_cast<std::size_t>(index) - 1].handle;
    });
}

int KPLSelectedDocument(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        const auto open = self.documents.selected();
        return open ? (*open)->handle : 0;
    });
}

int KPLSelectDocument(int instance, int document)
{
    return boundary::integer(instance,
                             [&](Instance& self) { return self.documents.select(document); });
}

wchar_t* KPLDocumentPath(int instance)
{
    return boundary::wideString(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<std::string> { return document.path(); });
    });
}

wchar_t* KPLGetDocumentPath(int instance, int document)
{
    return boundary::wideString(instance, [&](Instance& self) -> Result<std::string> {
        const auto open = self.documents.find(document);
        if (!open) {
            return tl::unexpected<Error>(open.error());
        }
        return (*open)->document->path();
    });
}

int KPLIsDocumentModified(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self,
                          [](Document& document) -> Result<int> { return document.isModified(); });
    });
}

int KPLOriginalFileSize(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self, [](Document& document) -> Result<int> {
            const std::int64_t size = document.originalSize();
            return size > INT_MAX ? -1 : static_cast<int>(size);
        });
    });
}

wchar_t* KPLPdfVersion(int instance)
{
    return boundary::wideString(instance, [](Instance& self) {
        return onDocument(
            self, [](Document& document) -> Result<std::string> { return version(document); });
    });
}

int KPLSetPdfVersion(int instance, int major, int minor)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self,
                          [&](Document& document) { return setVersion(document, major, minor); });
    });
}

int KPLSetObjectStreamMode(int instance, int mode)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.objectStreams, mode, 2); });
}

int KPLSetStreamDataMode(int instance, int mode)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.streamData, mode, 2); });
}

int KPLSetFlateLevel(int instance, int level)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.flateLevel, level, 9); });
}

int KPLSetFlateRecompression(int instance, int enabled)
{
    return boundary::integer(instance, [&](Instance& self) {
        return setCode(self.saveOptions.recompressFlate, enabled, 1);
    });
}

int KPLSetLinearization(int instance, int enabled)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.linearize, enabled, 1); });
}

int KPLIsLinearized(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self,
                          [](Document& document) -> Result<int> { return isLinearized(document); });
    });
}

int KPLSetDeterministicIdentifier(int instance, int enabled)
{
    return boundary::integer(instance, [&](Instance& self) {
        return setCode(self.saveOptions.deterministicIdentifier, enabled, 1);
    });
}

int KPLSetReadableOutput(int instance, int enabled)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.readable, enabled, 1); });
}

int KPLSetOverwriteMode(int instance, int mode)
{
    return boundary::integer(
        instance, [&](Instance& self) { return setCode(self.saveOptions.existing, mode, 1); });
}

int KPLSaveToFile(int instance, const wchar_t* path)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string file = boundary::takeWide(self, path);
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelectionWithin(open,
                                          saving::toFile(*open.document, file, self.saveOptions));
        });
    });
}

char* KPLSaveToString(int instance)
{
    return boundary::byteString(instance, [](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelectionWithin(open, saving::toString(*open.document, self.saveOptions));
        });
    });
}

int KPLCloseDocument(int instance)
{
    return boundary::integer(instance,
                             [](Instance& self) { return self.documents.closeSelected(); });
}

int KPLCloseAllDocuments(int instance)
{
    return boundary::integer(
        instance, [](Instance& self) -> Result<int> { return self.documents.closeAll(); });
}
