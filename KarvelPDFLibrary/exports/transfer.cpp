#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/pages/Arrange.h"
#include "KarvelPDFLibrary/pages/PageList.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "KarvelPDFLibrary/transfer/Extract.h"
#include "KarvelPDFLibrary/transfer/Frozen.h"
#include "KarvelPDFLibrary/transfer/ImportPages.h"
#include "exports.h"

#include <numeric>

using namespace karvel;
using boundary::keepingSelection;
using boundary::onDocument;
using boundary::onOpenDocument;
using transfer::WithOutline;

namespace {

using Source = std::shared_ptr<Document>;

/// Another open document as it is now.
Result<Source> openSource(Instance& self, int document)
{
    return self.documents.find(document).and_then(
        [](OpenDocument* open) { return open->frozen.of(*open->document); });
}

Result<Source> loadSource(Instance& self, Result<std::shared_ptr<io::ByteSource>> bytes,
                          const std::string& password)
{
    return bytes.and_then([&](const std::shared_ptr<io::ByteSource>& found) {
        return Document::load(found, {password, self.reconstruct}).map([](auto&& document) {
            return Source(std::forward<decltype(document)>(document));
        });
    });
}

Result<std::vector<int>> run(Document& document, int firstPage, int pageCount)
{
    return hasPages(document, {firstPage, pageCount}).map([&] {
        std::vector<int> list(static_cast<std::size_t>(pageCount));
        std::iota(list.begin(), list.end(), firstPage);
        return list;
    });
}

/// Inserts pages of a source into the selected document; 0 appends. Returns how many they are.
Result<int> insert(Instance& self, const Result<Source>& source,
                   const Result<std::vector<int>>& list, int beforePage, WithOutline outline)
{
    return onOpenDocument(self, [&](OpenDocument& open) -> Result<int> {
        if (!source || !list) {
            return tl::unexpected<Error>(source ? list.error() : source.error());
        }
        return keepingSelection(open, [&](Document& document) {
            const int before = beforePage == 0 ? document.pageCount() + 1 : beforePage;
            return transfer::importPages(document, open.imports, *source, *list, before, outline)
                .map([&] { return static_cast<int>(list->size()); });
        });
    });
}

Result<std::vector<int>> listOf(const Result<Source>& source, const std::string& ranges)
{
    return source.and_then([&](const Source& document) {
        return pages::parsePageList(ranges, document->pageCount());
    });
}

Outcome needsPlace(int beforePage)
{
    if (beforePage < 1) {
        return fail(ErrorCode::BadPageList, "the page to insert before must be 1 or more");
    }
    return {};
}

} // namespace

int KPLCopyPages(int instance, int firstPage, int pageCount, int beforePage)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelection(open, [&](Document& document) {
                return transfer::copyPages(document, {firstPage, pageCount}, beforePage).map([&] {
                    return beforePage;
                });
            });
        });
    });
}

int KPLInsertDocumentPages(int instance, int document, int firstPage, int pageCount, int beforePage)
{
    return boundary::integer(instance, [&](Instance& self) {
        return needsPlace(beforePage).and_then([&] {
            const Result<Source> source = openSource(self, document);
            const auto list = source.and_then(
                [&](const Source& found) { return run(*found, firstPage, pageCount); });
            return insert(self, source, list, beforePage, WithOutline::No).map([&](int) {
                return beforePage;
            });
        });
    });
}

int KPLInsertFilePages(int instance, const wchar_t* path, const wchar_t* password,
                       const wchar_t* pageRanges, int beforePage)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string file = boundary::takeWide(self, path);
        const std::string secret = boundary::takeWide(self, password);
        const std::string ranges = boundary::takeWide(self, pageRanges);
        return needsPlace(beforePage).and_then([&] {
            const Result<Source> source = loadSource(self, io::openFile(file), secret);
            return insert(self, source, listOf(source, ranges), beforePage, WithOutline::No);
        });
    });
}

int KPLReplacePage(int instance, int page, int document, int sourcePage)
{
    return boundary::integer(instance, [&](Instance& self) {
        return openSource(self, document).and_then([&](const Source& source) {
            return onOpenDocument(self, [&](OpenDocument& open) {
                return transfer::replacePage(*open.document, open.imports, page, source,
                                             sourcePage);
            });
        });
    });
}

int KPLInterleaveDocument(int instance, int document, int reversed)
{
    return boundary::integer(instance, [&](Instance& self) -> Result<int> {
        if (reversed != 0 && reversed != 1) {
            return fail(ErrorCode::BadArgument, "the value must be 0 or 1");
        }
        return openSource(self, document).and_then([&](const Source& source) {
            return onOpenDocument(self, [&](OpenDocument& open) {
                return keepingSelection(open, [&](Document& target) {
                    return transfer::interleave(target, open.imports, source, reversed == 1);
                });
            });
        });
    });
}

int KPLDuplicateDocument(int instance, int document)
{
    return boundary::integer(instance, [&](Instance& self) {
        return self.documents.find(document).and_then([&](OpenDocument* open) {
            return transfer::duplicate(*open->document).map([&](auto&& copy) {
                return self.documents.add(std::forward<decltype(copy)>(copy));
            });
        });
    });
}

int KPLAppendDocument(int instance, int document)
{
    return boundary::integer(instance, [&](Instance& self) {
        const Result<Source> source = openSource(self, document);
        return insert(self, source, listOf(source, {}), 0, WithOutline::Yes);
    });
}

int KPLAppendFile(int instance, const wchar_t* path, const wchar_t* password,
                  const wchar_t* pageRanges)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string file = boundary::takeWide(self, path);
        const std::string secret = boundary::takeWide(self, password);
        const std::string ranges = boundary::takeWide(self, pageRanges);
        const Result<Source> source = loadSource(self, io::openFile(file), secret);
        return insert(self, source, listOf(source, ranges), 0, WithOutline::Yes);
    });
}

int KPLAppendFromString(int instance, const char* data, const wchar_t* password)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string secret = boundary::takeWide(self, password);
        const Result<Source> source =
            loadSource(self, io::fromMemory(boundary::bytesOf(self, data)), secret);
        return insert(self, source, listOf(source, {}), 0, WithOutline::Yes);
    });
}

int KPLSavePagesToFile(int instance, const wchar_t* pageRanges, const wchar_t* outputPath)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string ranges = boundary::takeWide(self, pageRanges);
        const std::string file = boundary::takeWide(self, outputPath);
        return onDocument(self, [&](Document& document) {
            return pages::parsePageList(ranges, document.pageCount())
                .and_then([&](const auto& list) {
                    return transfer::extract(document, list).and_then([&](const auto& part) {
                        return saving::toFile(*part, file, self.saveOptions).map([&] {
                            return part->pageCount();
                        });
                    });
                });
        });
    });
}

char* KPLSavePagesToString(int instance, int firstPage, int pageCount)
{
    return boundary::byteString(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return run(document, firstPage, pageCount).and_then([&](const auto& list) {
                return transfer::extract(document, list).and_then([&](const auto& part) {
                    return saving::toString(*part, self.saveOptions);
                });
            });
        });
    });
}
