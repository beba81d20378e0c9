#include "KarvelPDFLibrary/transfer/ImportPages.h"

#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/saving/Damage.h"
#include "KarvelPDFLibrary/transfer/PageTransfer.h"

#include <algorithm>
#include <numeric>

namespace karvel::transfer {

namespace {

/// More pages than this are not meant: a page list can name the same page again and again.
constexpr std::size_t mostPages = 1'000'000;

constexpr std::size_t mostRounds = 1000;

/// Fails when a page is not there or its content was lost to damage.
Outcome canBeTaken(Document& source, const std::vector<int>& list)
{
    if (list.empty() || list.size() > mostPages) {
        return fail(ErrorCode::OutOfMemory, "the number of pages must be 1 to 1000000");
    }
    for (const int page : list) {
        if (Outcome status = hasPage(source, page); !status) {
            return status;
        }
        QPDFObjectHandle contents = source.page(page).getKey("/Contents");
        for (int i = contents.isArray() ? contents.getArrayNItems() : 0; i-- > 0;) {
            contents.getArrayItem(i).getTypeCode(); // reads it, which tells of damage
        }
    }
    if (source.source()) {
        if (Outcome status = source.source()->intact(); !status) {
            return status;
        }
    }
    return saving::settleLostContent(source, saving::LostPages::Refuse);
}

/// What refers to removed pages is put right first. The page tree may stay stale: it would be
/// written for each page that comes.
Outcome finishRemoval(Document& document)
{
    return document.removedPages().empty() ? Outcome() : deletion::synchronize(document);
}

/// The list in parts that name each page once: the first has every page that is listed.
std::vector<std::vector<std::size_t>> roundsOf(const std::vector<int>& list)
{
    std::vector<std::vector<std::size_t>> rounds;
    std::vector<std::size_t> times;
    for (std::size_t place = 0; place < list.size(); ++place) {
        const auto page = static_cast<std::size_t>(list[place]);
        times.resize(std::max(times.size(), page + 1));
        rounds.resize(std::max(rounds.size(), times[page] + 1));
        rounds[times[page]++].push_back(place);
    }
    return rounds;
}

struct Round {
    Round(const std::shared_ptr<Document>& source, Document& target, SharedCopies& shared)
        : copier(source, target, shared), transfer(*source, target, copier)
    {
    }
    ObjectCopier copier;
    PageTransfer transfer;
};

} // namespace

SharedCopies& Imports::from(const std::shared_ptr<Document>& source)
{
    sources_.erase(std::remove_if(sources_.begin(), sources_.end(),
                                  [](const auto& entry) { return entry.first.expired(); }),
                   sources_.end());
    for (auto& [known, copies] : sources_) {
        if (known.lock() == source) {
            return copies;
        }
    }
    return sources_.emplace_back(source, SharedCopies()).second;
}

Outcome importPages(Document& target, Imports& imports, const std::shared_ptr<Document>& source,
                    const std::vector<int>& list, int beforePage, WithOutline outline)
{
    if (Outcome status = hasPlaceBefore(target, beforePage); !status) {
        return status;
    }
    try {
        if (Outcome status = canBeTaken(*source, list); !status) {
            return status;
        }
        const auto rounds = roundsOf(list);
        if (rounds.size() > mostRounds) {
            return fail(ErrorCode::OutOfMemory, "a page cannot come more than 1000 times at once");
        }
        if (Outcome status = finishRemoval(target); !status) {
            return status;
        }
        const bool whole = rounds.front().size() == static_cast<std::size_t>(source->pageCount());
        std::vector<QPDFObjectHandle> copies(list.size());
        std::vector<std::unique_ptr<Round>> transfers;
        for (const std::vector<std::size_t>& round : rounds) {
            const bool isFirst = transfers.empty();
            transfers.push_back(std::make_unique<Round>(source, target, imports.from(source)));
            PageTransfer& transfer = transfers.back()->transfer;
            for (std::size_t i = 0; !isFirst && i < rounds.front().size(); ++i) {
                // Links of a page that comes again lead to the first copies.
                const std::size_t place = rounds.front()[i];
                transfer.standFor(list[place], copies[place]);
            }
            for (const std::size_t place : round) {
                copies[place] = transfer.add(list[place]);
            }
            transfer.copy(whole && isFirst, isFirst && outline == WithOutline::Yes);
        }
        for (const auto& round : transfers) {
            round->transfer.join();
        }
        target.insertPages(beforePage, copies);
        return {};
    } catch (...) {
        imports.forget(source);
        return tl::unexpected<Error>(currentExceptionAsError(source->name()));
    }
}

Outcome copyPages(Document& document, PageRun run, int beforePage)
{
    if (Outcome status = hasPages(document, run); !status) {
        return status;
    }
    if (Outcome status = hasPlaceBefore(document, beforePage); !status) {
        return status;
    }
    if (Outcome status = finishRemoval(document); !status) {
        return status;
    }
    try {
        ObjectCopier copier(document);
        PageTransfer transfer(document, document, copier);
        std::vector<QPDFObjectHandle> copies;
        for (int page = run.first; page < run.first + run.count; ++page) {
            copies.push_back(transfer.add(page));
        }
        transfer.copy(false, false);
        transfer.join();
        document.insertPages(beforePage, copies);
        return {};
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

namespace {

/// Takes away what stands on a page: it goes as with a page that is removed.
Outcome clearPage(Document& document, int page)
{
    QPDFObjectHandle dictionary = document.editPage(page);
    QPDFObjectHandle old = document.changes().add(dictionary.shallowCopy());
    dictionary.removeKey("/Annots");
    document.insertPages(page + 1, {old});
    document.removePages({page + 1, 1});
    return deletion::synchronize(document);
}

} // namespace

Outcome replacePage(Document& target, Imports& imports, int page,
                    const std::shared_ptr<Document>& source, int sourcePage)
{
    if (Outcome status = hasPage(target, page); !status) {
        return status;
    }
    try {
        if (Outcome status = canBeTaken(*source, {sourcePage}); !status) {
            return status;
        }
        if (Outcome status = finishRemoval(target); !status) {
            return status;
        }
        const QPDFObjectHandle place = target.page(page);
        ObjectCopier copier(source, target, imports.from(source));
        PageTransfer transfer(*source, target, copier);
        const QPDFObjectHandle content = transfer.addContentOf(sourcePage, place);
        transfer.copy(false, false);
        if (Outcome status = clearPage(target, page); !status) {
            return status;
        }
        transfer.join();
        target.changes().replace(QPDFObjectHandle(place).getObjGen(), content);
        std::vector<PageEntry> entries = target.order().toVector();
        entries[static_cast<std::size_t>(page) - 1].inherited = 0;
        target.reorderPages(std::move(entries));
        return {};
    } catch (...) {
        imports.forget(source);
        return tl::unexpected<Error>(currentExceptionAsError(source->name()));
    }
}

Result<int> interleave(Document& target, Imports& imports, const std::shared_ptr<Document>& source,
                       bool reversed)
{
    std::vector<int> list(static_cast<std::size_t>(source->pageCount()));
    std::iota(list.begin(), list.end(), 1);
    if (reversed) {
        std::reverse(list.begin(), list.end());
    }
    const auto fronts = static_cast<std::size_t>(target.pageCount());
    if (Outcome status =
            importPages(target, imports, source, list, target.pageCount() + 1, WithOutline::No);
        !status) {
        return tl::unexpected<Error>(status.error());
    }
    const std::vector<PageEntry> appended = target.order().toVector();
    std::vector<PageEntry> entries;
    entries.reserve(appended.size());
    for (std::size_t i = 0; i < std::max(fronts, list.size()); ++i) {
        if (i < fronts) {
            entries.push_back(appended[i]);
        }
        if (i < list.size()) {
            entries.push_back(appended[fronts + i]);
        }
    }
    target.reorderPages(std::move(entries));
    return static_cast<int>(list.size());
}

} // namespace karvel::transfer
