#include "KarvelPDFLibrary/document/CryptFilters.h"
#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/document/IndexDoubts.h"
#include "KarvelPDFLibrary/document/LostEncryption.h"
#include "KarvelPDFLibrary/document/MissingTrailer.h"
#include "KarvelPDFLibrary/index/CrossReferenceCount.h"
#include "KarvelPDFLibrary/index/KnownReferences.h"
#include "KarvelPDFLibrary/io/WindowedInput.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QUtil.hh>

/// How a document is opened: by an index and without libqpdf where that can be, by libqpdf alone
/// where the file is damaged, and with what is left of its encryption where that is lost.
namespace karvel {

namespace {

/// One sentence for a document that cannot be opened.
Error openingError(const std::string& name)
{
    Error error = currentExceptionAsError(name);
    if (error.code == ErrorCode::WrongPassword) {
        error.text = name + ": the password is missing or wrong";
    } else if (error.code == ErrorCode::NotPdf || error.code == ErrorCode::LibraryFailed) {
        error.code = ErrorCode::NotPdf; // libqpdf stumbles over numbers that are too large, too
        error.text = name + ": not a PDF, or damaged beyond repair (" +
                     error.text.substr(std::min(error.text.size(), name.size() + 2)) + ")";
    }
    return error;
}

using Opened = Result<std::unique_ptr<Document>>;
using Opener = std::function<Opened(const std::shared_ptr<io::ByteSource>&, const LoadOptions&)>;
using Traces = std::function<const EncryptionTraces&()>; // found when first asked for

/// Whether a document was opened as if it were open to everybody although what says how it is
/// encrypted may merely be lost.
bool mayHideEncryption(Document& document, const Traces& traces)
{
    if (document.roots() != nullptr || document.isEncrypted()) {
        return false;
    }
    const auto trailer = document.file().getTrailer().getDictAsMap();
    const auto entry = trailer.find("/Encrypt");
    const bool leadsNowhere = entry != trailer.end() && entry->second.isIndirect();
    return leadsNowhere || (document.wasReconstructed() && traces().any);
}

/// Opens a document whose trailer doesn't say how it is encrypted by what else in the file does.
Opened openWithEncryptionFound(const std::shared_ptr<io::ByteSource>& source,
                               const EncryptionTraces& traces, const LoadOptions& options,
                               const Opener& open)
{
    if (const std::shared_ptr<io::ByteSource> mended = withTrailerAdded(source, traces)) {
        Opened document = open(mended, options);
        // A password can be wrong only where nothing else is missing that the key is made from.
        const bool isKeyWhole = traces.revision > 4 || !traces.identifier.empty();
        const bool fits =
            document ? (*document)->isEncrypted()
                     : document.error().code == ErrorCode::EncryptionUnsupported ||
                           (document.error().code == ErrorCode::WrongPassword && isKeyWhole);
        if (fits) {
            return document;
        }
    }
    return fail(ErrorCode::NotPdf, source->name() +
                                       ": damaged: it is encrypted, or was, but what " +
                                       "says how is lost; an undamaged copy is needed");
}

Outcome canBeDeciphered(const std::string& name, const std::string& unknownFilter)
{
    if (!unknownFilter.empty()) {
        return fail(ErrorCode::EncryptionUnsupported,
                    name + ": is encrypted in a way that is not supported (crypt filter " +
                        unknownFilter + ")");
    }
    return {};
}

/// Rebuilding would not do instead: it takes older objects for present ones.
Outcome hasPossibleCrossReferences(io::ByteSource& source)
{
    try {
        if (index::hasExcessiveCrossReferences(source)) {
            return fail(ErrorCode::NotPdf,
                        source.name() + ": damaged: its cross-reference data have more entries "
                                        "than a file of its size can need");
        }
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(source.name()));
    }
    return {};
}

/// Null where the cross-reference data are left to libqpdf.
std::shared_ptr<const index::CrossReferences> referencesReadFrom(io::ByteSource& source)
{
    auto read = index::readCrossReferences(source);
    return read ? std::make_shared<const index::CrossReferences>(std::move(*read)) : nullptr;
}

/// Throws when another program changed the file since it was opened.
void mustBeIntact(const io::ByteSource& source)
{
    if (const Outcome status = source.intact(); !status) {
        throw QPDFExc(qpdf_e_system, source.name(), "", 0,
                      status.error().text.substr(source.name().size() + 2));
    }
}

} // namespace

Result<std::unique_ptr<Document>> Document::load(std::shared_ptr<io::ByteSource> source,
                                                 const LoadOptions& options)
{
    std::shared_ptr<const index::CrossReferences> read;
    // Programs have been known to store passwords in other encodings. Each attempt needs a fresh
    // file: libqpdf looks at the password only once, however often a file is opened again.
    const auto openSource = [&](const std::shared_ptr<io::ByteSource>& from,
                                const LoadOptions& with) -> Opened {
        const std::vector<std::string> encodings =
            with.password.empty() ? std::vector<std::string>{with.password}
                                  : QUtil::possible_repaired_encodings(with.password);
        Outcome status;
        for (const std::string& encoding : encodings) {
            std::unique_ptr<Document> document(new Document(from));
            status = document->open({encoding, with.reconstruct, with.salvage},
                                    from == source ? read : nullptr);
            if (status) {
                return document;
            }
            if (status.error().code != ErrorCode::WrongPassword) {
                break;
            }
        }
        return tl::unexpected<Error>(std::move(status.error()));
    };
    if (const auto ended = options.salvage ? withStreamEnded(source) : nullptr) {
        Opened document = load(ended, options);
        if (document) {
            (*document)->originalSize_ = source->size();
            return document;
        }
    }
    std::optional<EncryptionTraces> known; // finding them takes all bytes of the file
    const Traces traces = [&]() -> const EncryptionTraces& {
        if (!known) {
            known = tracesOfEncryption(*source);
        }
        return *known;
    };
    const auto openEncrypted = [&] {
        Opened found = openWithEncryptionFound(source, traces(), options, openSource);
        if (found) {
            (*found)->originalSize_ = source->size();
            (*found)->reconstructed_ = true;
        }
        return found;
    };
    read = referencesReadFrom(*source);
    if (Outcome status = read ? Outcome() : hasPossibleCrossReferences(*source); !status) {
        return tl::unexpected<Error>(std::move(status.error()));
    }
    Opened document = openSource(source, options);
    if (document && mayHideEncryption(**document, traces)) {
        return openEncrypted();
    }
    if (document || !options.reconstruct || document.error().code != ErrorCode::NotPdf) {
        return document;
    }
    if (auto mended = traces().any ? nullptr : loadWithTrailerAdded(source, options)) {
        return mended;
    }
    Opened found = openEncrypted();
    const bool saysMore = found || found.error().code != ErrorCode::NotPdf;
    return saysMore ? std::move(found) : std::move(document);
}

/// libqpdf rebuilds a cross-reference table only where a trailer is left. For sources without a
/// trace of encryption.
std::unique_ptr<Document>
Document::loadWithTrailerAdded(const std::shared_ptr<io::ByteSource>& source,
                               const LoadOptions& options)
{
    const std::shared_ptr<io::ByteSource> mended = withTrailerAdded(source);
    if (!mended) {
        return nullptr;
    }
    std::unique_ptr<Document> document(new Document(mended));
    document->originalSize_ = source->size();
    document->reconstructed_ = true;
    return document->open({{}, true, options.salvage}, nullptr) ? std::move(document) : nullptr;
}

/// Has libqpdf open the document when it is first needed. What was read is large, and libqpdf
/// seldom needed later: it is read again then.
void Document::openLater(const LoadOptions& options,
                         const std::shared_ptr<const index::CrossReferences>& read)
{
    file_.openWhenNeeded([this, reconstruct = options.reconstruct, wasRead = read != nullptr,
                          kept = std::weak_ptr(read)](QPDF& file) {
        mustBeIntact(*source_);
        file.setAttemptRecovery(reconstruct);
        auto known = kept.lock();
        if (wasRead && !known) {
            known = referencesReadFrom(*source_);
        }
        if (known) {
            index::openWithKnownReferences(file, source_, *known, membersApart());
        } else {
            file.processInputSource(std::make_shared<io::WindowedInput>(source_),
                                    password_.c_str());
        }
        pageTree::readInherited(file, inherited_, unreadInherited_);
    });
}

/// What is in object streams, for libqpdf to read one by one; nothing where it isn't known, or of
/// no use.
index::StreamMembers Document::membersApart()
{
    const bool known = index_ && index_->fileState() == index::FileState::Whole &&
                       !index_->objectStreams().empty();
    return known ? index::StreamMembers{index_.get(), &*streams_} : index::StreamMembers{};
}

/// `read` is what was read of the cross-reference data without libqpdf.
Outcome Document::open(const LoadOptions& options,
                       const std::shared_ptr<const index::CrossReferences>& read)
{
    password_ = options.password;
    salvage_ = options.salvage;
    if (source_->size() == 0) {
        return fail(ErrorCode::NotPdf, source_->name() + ": the file is empty");
    }
    try {
        openLater(options, read);
        if (!read) {
            keepWhatTheKeyWasMadeFrom();
            if (Outcome status = canBeDeciphered(source_->name(), unknownCryptFilter(file()));
                !status) {
                return status;
            }
        }
        if (Outcome status = readPages(options, read ? &*read : nullptr); !status) {
            return status;
        }
        if (isEncrypted() && (!index_ || index_->mayUseCryptFilters())) {
            const std::string unknown = unknownCryptFilterOfStreams(file());
            if (Outcome status = canBeDeciphered(source_->name(), unknown); !status) {
                return status;
            }
        }
    } catch (...) {
        Error error = openingError(source_->name());
        if (Outcome status = source_->intact(); !status) {
            return status;
        }
        return tl::unexpected<Error>(std::move(error));
    }
    savedRevision_ = changes_.revision();
    loadedRevision_ = revision();
    return {};
}

/// The file identifier goes into the key of an encrypted document (ISO 32000-2, 7.6.4.3.2). Where
/// there is no proper one, libqpdf made the key without, and that must not change.
void Document::keepWhatTheKeyWasMadeFrom()
{
    QPDFObjectHandle trailer = file().getTrailer();
    QPDFObjectHandle identifier = trailer.getKey("/ID");
    const bool proper = identifier.isArray() && identifier.getArrayNItems() == 2 &&
                        identifier.getArrayItem(0).isString();
    if (isEncrypted() && !proper) {
        const QPDFObjectHandle empty = QPDFObjectHandle::newString("");
        trailer.replaceKey("/ID", QPDFObjectHandle::newArray({empty, empty}));
    }
}

/// Where there is an index, it has seen to that.
Outcome Document::hasPossibleNumbers()
{
    if (index_) {
        return {};
    }
    const std::size_t highest = file().getObjectCount(); // of references to nothing as well
    const std::size_t objects = file().getXRefTable().size();
    if (index::isOutOfProportion(highest, objects)) {
        return fail(ErrorCode::NotPdf, source_->name() + ": damaged: it speaks of object " +
                                           std::to_string(highest) + ", but has only " +
                                           std::to_string(objects));
    }
    return {};
}

void Document::readIndex(const LoadOptions& options, const index::CrossReferences* read)
{
    if (!reconstructed_) {
        index_ = index::ReferenceIndex::build(file_, *source_, *streams_, read,
                                              index::FileState::Whole, indexRefusal_);
    }
    if (!index_ && read != nullptr) {
        openLater(options, nullptr); // what is damaged is for libqpdf alone
    }
    if (!index_) {
        index_ = indexOfDamaged();
    }
}

/// The index of a file in which only such things are wrong of which libqpdf can be asked what it
/// makes. Not where losses are wished for, which may be anywhere, nor where strings are enciphered,
/// which may be damaged without a sign.
std::unique_ptr<index::ReferenceIndex> Document::indexOfDamaged()
{
    if (salvage_ || isEncrypted()) {
        indexRefusal_ = "a damaged file " +
                        std::string(salvage_ ? "of which parts may be lost" : "that is encrypted");
        return nullptr;
    }
    const char rebuiltMeanwhile[] = "the cross-reference table was rebuilt while the file was read";
    try {
        if (!reconstructed_ && !settleWrongOffsets(*this)) {
            indexRefusal_ = rebuiltMeanwhile;
            return nullptr;
        }
        const bool rebuilt = reconstructed_;
        auto index = index::ReferenceIndex::build(
            file_, *source_, *streams_, nullptr,
            rebuilt ? index::FileState::Rebuilt : index::FileState::Damaged, indexRefusal_);
        if (!index) {
            return nullptr;
        }
        indexRefusal_ = settleIndexDoubts(*this, *index);
        warnings();
        if (reconstructed_ != rebuilt) {
            indexRefusal_ = rebuiltMeanwhile;
        }
        return indexRefusal_.empty() ? std::move(index) : nullptr;
    } catch (const index::OutOfProportion&) {
        throw;
    } catch (const std::exception& exception) {
        indexRefusal_ = exception.what();
        return nullptr;
    }
}

std::optional<ReadPages> Document::pagesByIndex()
{
    if (roots() != nullptr) {
        return pageTree::readFromIndex(file_, *index_, roots()->pages());
    }
    return pageTree::readFromIndex(file_, *index_, catalog().getKey("/Pages").getObjGen());
}

Outcome Document::readPages(const LoadOptions& options, const index::CrossReferences* read)
{
    warnings();
    readIndex(options, read);
    std::optional<ReadPages> pages;
    if (index_) {
        roots_ = read == nullptr ? std::nullopt : Roots::read(*read, *index_, *source_);
        pages = pagesByIndex();
    }
    if (index_ && !pages && index_->fileState() != index::FileState::Whole) {
        index_.reset(); // what belongs to pages that are lost is not found by it
        indexRefusal_ = "a damaged file with an unusual page tree";
    }
    if (index_) {
        changes_.setHighestNumber(index_->highestNumber());
    }
    if (Outcome status = hasPossibleNumbers(); !status) {
        return status;
    }
    if (!pages) {
        const auto reconstructed = [this] {
            warnings();
            return reconstructed_;
        };
        Result<ReadPages> read =
            pageTree::read(file(), source_->size(), changes_, reconstructed, warnings_);
        if (Outcome status = source_->intact(); !status) {
            return status;
        }
        if (!read) {
            return fail(read.error().code, source_->name() + ": " + read.error().text);
        }
        pages = std::move(*read);
    }
    std::int32_t number = 0;
    for (PageEntry& entry : pages->entries) {
        entry.original = entry.loaded = ++number;
    }
    order_ = PageOrder(std::move(pages->entries));
    inherited_ = std::move(pages->inherited);
    unreadInherited_ = std::move(pages->unread);
    doubts_ = std::move(pages->doubts);
    copies_.insert(pages->copies.begin(), pages->copies.end());
    treeIsStale_ = pages->differsFromTree;
    if (pages->canBePruned && !pages->differsFromTree) {
        nodes_ = std::move(pages->nodes);
    }
    warnings();
    return source_->intact();
}

} // namespace karvel
