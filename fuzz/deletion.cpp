#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/saving/Save.h"
#include "fuzz/ObjectTable.h"
#include "tests/support/IndexAgreement.h"
#include "tests/support/SameDocument.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <fuzzer/FuzzedDataProvider.h>
#include <iostream>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

namespace {

using namespace karvel;

// The last bytes of an input say what is done with the document before them.
constexpr std::size_t instructions = 6;

/// Leaves the output in the folder in which the program was started.
[[noreturn]] void fail(const std::string& what, const std::string& output)
{
    std::ofstream("wrong-output.pdf", std::ios::binary) << output;
    std::cerr << "wrong-output.pdf: " << what << '\n';
    std::abort();
}

// What a strict reader makes of an output: its pages, all of them, or an end of the process.
std::size_t pagesIn(const std::string& output)
{
    try {
        QPDF file;
        file.setSuppressWarnings(true);
        file.setAttemptRecovery(false);
        file.processMemoryFile("output", output.data(), output.size());
        return QPDFPageDocumentHelper(file).getAllPages().size();
    } catch (const std::exception& error) {
        fail(error.what(), output);
    }
}

struct Edit {
    int first;
    int count;
};

// Whether an output is linearised as it must be. What libqpdf finds in it besides damage is a fault
// in the hint tables; where the document itself is odd, libqpdf may give up looking.
void checkLinearization(const std::string& output)
{
    QPDF file;
    file.setSuppressWarnings(true);
    file.setAttemptRecovery(false);
    file.processMemoryFile("output", output.data(), output.size());
    if (!file.isLinearized()) {
        fail("an output is not linearised", output);
    }
    try {
        file.checkLinearization();
    } catch (const std::logic_error&) {
        return;
    }
    const std::vector<QPDFExc> warnings = file.getWarnings();
    const bool isDamaged =
        std::any_of(warnings.begin(), warnings.end(), [](const QPDFExc& warning) {
            return warning.getMessageDetail().find("mismatch") == std::string::npos;
        });
    if (!warnings.empty() && !isDamaged) {
        fail("hint tables: " + std::string(warnings.front().what()), output);
    }
}

// Deletes runs of pages and saves; fails when what was saved has not the pages that it must have.
// Nothing when nothing was changed, and when the document can't be read or saved.
std::string deleteAndSave(const std::string& bytes, const std::vector<Edit>& edits,
                          const saving::SaveOptions& options)
{
    auto document = Document::load(io::fromMemory(bytes), {});
    if (!document || (*document)->pageCount() > 5000) {
        return {};
    }
    for (const Edit& edit : edits) {
        const int before = (*document)->pageCount();
        const int first = 1 + edit.first % std::max(before, 1);
        const PageRun run{first, std::min(1 + edit.count, before - first + 1)};
        if (before < 2 || run.count >= before) {
            break;
        }
        if (!pages::deletePages(**document, run) ||
            (*document)->pageCount() != before - run.count) {
            fail("a run of pages that is there was not deleted", bytes);
        }
    }
    if (!(*document)->isModified()) {
        return {};
    }
    const auto output = saving::toString(**document, options);
    const int expected = (*document)->pageCount();
    if (!output) {
        return {};
    }
    if (options.linearize && options.way == saving::Way::CopyUnchanged) {
        checkLinearization(*output);
    }
    const std::size_t pages = pagesIn(*output);
    if (pages != static_cast<std::size_t>(expected)) {
        fail(std::to_string(pages) + " pages instead of " + std::to_string(expected), *output);
    }
    return (*document)->file().isEncrypted() ? std::string() : *output;
}

// What comes of a damaged document must be the same with an index, where it has one, and without.
void checkIndexOfDamaged(const std::string& bytes, const std::vector<Edit>& edits,
                         const saving::SaveOptions& options, const std::string& output)
{
    auto document = Document::load(io::fromMemory(bytes), {});
    if (!document || (*document)->index() == nullptr ||
        (*document)->index()->fileState() == index::FileState::Whole) {
        return;
    }
    const std::string disagreement = support::indexDisagreement(**document);
    if (!disagreement.empty()) {
        fail("libqpdf believes something else: " + disagreement, bytes);
    }
    const std::string without = deleteAndSave(" " + bytes, edits, options);
    if (output.empty() != without.empty()) {
        fail("only saved with an index, or without", bytes);
    }
    const std::string difference =
        output.empty() ? output : support::firstDifference(output, without);
    if (!difference.empty()) {
        fail("another document without an index: " + difference, bytes);
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t room, unsigned seed)
{
    size = LLVMFuzzerMutate(data, size, room);
    if (seed % 4 == 0 || size <= instructions) {
        return size;
    }
    const std::string tail(reinterpret_cast<char*>(data) + size - instructions, instructions);
    const std::string whole =
        fuzz::withFittingTable(std::string(reinterpret_cast<char*>(data), size - instructions));
    if (whole.size() + instructions > room) {
        return size;
    }
    std::memcpy(data, whole.data(), whole.size());
    std::memcpy(data + whole.size(), tail.data(), instructions);
    return whole.size() + instructions;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedDataProvider given(data, size);
    saving::SaveOptions options;
    const auto choices = given.ConsumeIntegral<std::uint8_t>();
    options.objectStreams =
        (choices & 1) != 0 ? saving::ObjectStreams::Keep : saving::ObjectStreams::Pack;
    options.streamData =
        (choices & 2) != 0 ? saving::StreamData::Keep : saving::StreamData::Compress;
    options.linearize = (choices & 12) == 12;
    std::vector<Edit> edits;
    for (int i = 0; i < 2; ++i) {
        const int first = given.ConsumeIntegral<std::uint8_t>();
        edits.push_back({first, given.ConsumeIntegral<std::uint8_t>() % 8});
    }
    given.ConsumeIntegral<std::uint8_t>();
    const std::string bytes = given.ConsumeRemainingBytesAsString();
    const std::string disagreement = support::crossReferenceDisagreement(bytes);
    if (!disagreement.empty()) {
        fail("libqpdf reads other cross-references: " + disagreement, bytes);
    }
    options.way = saving::Way::Rewrite;
    const std::string rewritten = deleteAndSave(bytes, edits, options);
    options.way = saving::Way::CopyUnchanged;
    const std::string copied = deleteAndSave(bytes, edits, options);
    if (options.streamData == saving::StreamData::Keep && !copied.empty() && !rewritten.empty()) {
        const std::string difference = support::firstDifference(copied, rewritten);
        if (!difference.empty()) {
            fail("rewriting gives another document: " + difference, copied);
        }
    }
    if (options.streamData == saving::StreamData::Keep) {
        checkIndexOfDamaged(bytes, edits, options, copied);
    }
    return 0;
}
