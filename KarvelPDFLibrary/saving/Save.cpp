#include "KarvelPDFLibrary/saving/Save.h"

#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "KarvelPDFLibrary/content/ContentStreams.h"
#include "KarvelPDFLibrary/content/LostContent.h"
#include "KarvelPDFLibrary/deletion/Synchronize.h"
#include "KarvelPDFLibrary/io/Permissions.h"
#include "KarvelPDFLibrary/saving/Damage.h"
#include "KarvelPDFLibrary/saving/DisguisedPages.h"
#include "KarvelPDFLibrary/saving/EscapedNames.h"
#include "KarvelPDFLibrary/saving/HeldBytes.h"
#include "KarvelPDFLibrary/saving/LinearizedWriter.h"
#include "KarvelPDFLibrary/saving/Liveness.h"
#include "KarvelPDFLibrary/saving/VerbatimWriter.h"
#include "KarvelPDFLibrary/saving/VersionNeeds.h"

#include <cerrno>
#include <cstring>
#include <mutex>
#include <optional>
#include <qpdf/Pipeline.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDFWriter.hh>
#include <shared_mutex>
#include <unistd.h>

namespace karvel::saving {

namespace {

/// Hands what libqpdf writes to a sink.
class SinkPipeline final : public Pipeline {
public:
    explicit SinkPipeline(io::ByteSink& sink) : Pipeline("output", nullptr), sink_(sink) {}

    void write(unsigned char const* data, size_t length) override
    {
        sink_.write(reinterpret_cast<const char*>(data), length);
    }
    void finish() override {}

private:
    io::ByteSink& sink_;
};

class StringSink final : public io::ByteSink {
public:
    void write(const char* bytes, std::size_t length) override { text.append(bytes, length); }
    std::string text;
};

/// libqpdf keeps one compression level for the whole process: a save with a level of its own runs
/// alone, all others side by side.
class CompressionLevel {
public:
    explicit CompressionLevel(int level)
    {
        if (level == 0) {
            shared_ = std::shared_lock<std::shared_mutex>(mutex);
        } else {
            alone_ = std::unique_lock<std::shared_mutex>(mutex);
            Pl_Flate::setCompressionLevel(level);
        }
    }
    ~CompressionLevel()
    {
        if (alone_.owns_lock()) {
            Pl_Flate::setCompressionLevel(-1); // Z_DEFAULT_COMPRESSION
        }
    }
    CompressionLevel(const CompressionLevel&) = delete;
    CompressionLevel& operator=(const CompressionLevel&) = delete;

private:
    static std::shared_mutex mutex;
    std::shared_lock<std::shared_mutex> shared_;
    std::unique_lock<std::shared_mutex> alone_;
};

std::shared_mutex CompressionLevel::mutex;

/// Bits of /P (ISO 32000-2, table 22), counted from 1 as there.
bool permits(int permissionBits, int bit)
{
    return ((static_cast<unsigned>(permissionBits) >> (bit - 1)) & 1U) != 0;
}

qpdf_r3_print_e printing(int permissionBits)
{
    if (!permits(permissionBits, 3)) {
        return qpdf_r3p_none;
    }
    return permits(permissionBits, 12) ? qpdf_r3p_full : qpdf_r3p_low;
}

void encrypt(QPDFWriter& writer, const NewEncryption& plan)
{
    const int bits = plan.permissionBits;
    const char* user = plan.userPassword.c_str();
    const char* owner = plan.ownerPassword.c_str();
    const bool accessibility = permits(bits, 10);
    const bool copying = permits(bits, 5);
    const bool assembling = permits(bits, 11);
    const bool annotating = permits(bits, 6);
    const bool formFilling = permits(bits, 9);
    const bool modifying = permits(bits, 4);
    switch (plan.algorithm) {
    case EncryptionAlgorithm::Rc4Bits128:
        writer.setR3EncryptionParametersInsecure(user, owner, accessibility, copying, assembling,
                                                 annotating, formFilling, modifying,
                                                 printing(bits));
        break;
    case EncryptionAlgorithm::AesBits128:
        writer.setR4EncryptionParametersInsecure(user, owner, accessibility, copying, assembling,
                                                 annotating, formFilling, modifying, printing(bits),
                                                 plan.coversMetadata, true);
        break;
    default:
        writer.setR6EncryptionParameters(user, owner, accessibility, copying, assembling,
                                         annotating, formFilling, modifying, printing(bits),
                                         plan.coversMetadata);
        break;
    }
}

void configure(QPDFWriter& writer, Document& document, const SaveOptions& options)
{
    static constexpr qpdf_object_stream_e objectStreams[] = {qpdf_o_preserve, qpdf_o_disable,
                                                             qpdf_o_generate};
    static constexpr qpdf_stream_data_e streamData[] = {qpdf_s_preserve, qpdf_s_uncompress,
                                                        qpdf_s_compress};
    // Where members of object streams stand apart for it, it would keep none.
    const bool packsAnew = options.objectStreams == ObjectStreams::Keep &&
                           hasObjectStreams(document) && !readsObjectStreams(document.file());
    writer.setObjectStreamMode(packsAnew ? qpdf_o_generate
                                         : objectStreams[static_cast<int>(options.objectStreams)]);
    writer.setStreamDataMode(streamData[static_cast<int>(options.streamData)]);
    writer.setRecompressFlate(options.recompressFlate);
    writer.setLinearization(options.linearize);
    if (options.readable) {
        writer.setQDFMode(true);
    }
    EncryptionPlan encryption = document.encryption;
    if (options.encrypting != Encrypting::AsPlanned) {
        encryption = {};
    }
    if (options.encrypting == Encrypting::Never) {
        encryption.kind = EncryptionPlan::Kind::Remove;
    }
    bool encrypted = document.isEncrypted();
    switch (encryption.kind) {
    case EncryptionPlan::Kind::Keep:
        if (encrypted) {
            // Left to itself, libqpdf drops the encryption as soon as a way of treating streams was
            // chosen.
            writer.copyEncryptionParameters(document.file());
        }
        break;
    case EncryptionPlan::Kind::Remove:
        writer.setPreserveEncryption(false);
        encrypted = false;
        break;
    case EncryptionPlan::Kind::Replace:
        encrypt(writer, *encryption.replacement);
        encrypted = true;
        break;
    }
    if (!document.forcedVersion.empty()) {
        std::string version;
        int extensionLevel = 0;
        versionToWrite(document, options, encryption).getVersion(version, extensionLevel);
        writer.forcePDFVersion(version, extensionLevel);
    }
    writer.setDeterministicID(options.deterministicIdentifier && !encrypted);
}

void rewrite(Document& document, io::ByteSink& sink, const SaveOptions& options)
{
    const CompressionLevel level(options.flateLevel);
    // libqpdf writes the entry only where the input had it, as damaged files may not.
    if (!document.file().getTrailer().hasKey("/Size")) {
        document.changes().editTrailer().replaceKey("/Size", QPDFObjectHandle::newInteger(0));
    }
    // It takes the first half as a string, which a damaged trailer may not have.
    QPDFObjectHandle identifier = document.file().getTrailer().getKey("/ID");
    if (!identifier.isNull() && !(identifier.isArray() && identifier.getArrayNItems() > 0 &&
                                  identifier.getArrayItem(0).isString())) {
        document.changes().editTrailer().removeKey("/ID");
    }
    const EscapedNames names(document.file());
    std::optional<DisguisedPages> pages;
    if (options.linearize) {
        pages.emplace(document.file());
    }
    QPDFWriter writer(document.file());
    SinkPipeline pipeline(sink);
    writer.setOutputPipeline(&pipeline);
    configure(writer, document, options);
    writer.write();
}

/// The password that opens what is written by libqpdf.
std::string passwordOfOutput(const Document& document, const SaveOptions& options)
{
    const EncryptionPlan& plan = document.encryption;
    if (options.encrypting == Encrypting::AsPlanned && plan.kind == EncryptionPlan::Kind::Replace) {
        return plan.replacement->userPassword;
    }
    return document.password();
}

/// Lets libqpdf write the document, and linearises what it wrote. Its own linearisation serves
/// where ours can't, and on the copy only: it moves what pages inherit, and keeps the pages that it
/// found for the next time. On some documents that were damaged it ends in an internal error.
void rewriteLinearized(Document& document, io::ByteSink& sink, const SaveOptions& options)
{
    SaveOptions plain = options;
    plain.linearize = false;
    StringSink rewritten;
    rewrite(document, rewritten, plain);
    auto clean = Document::load(io::fromMemory(std::move(rewritten.text)),
                                {passwordOfOutput(document, options)});
    if (!clean) {
        rewrite(document, sink, options);
        return;
    }
    SaveOptions copying = options;
    copying.objectStreams = ObjectStreams::Keep;
    copying.streamData = StreamData::Keep;
    copying.recompressFlate = false;
    copying.readable = false;
    copying.encrypting = Encrypting::AsLoaded;
    if (!whyNotVerbatim(**clean, copying).empty() ||
        !deletion::synchronize(**clean, deletion::Degree::Recorded)) {
        rewrite(**clean, sink, copying);
        return;
    }
    prepareForLinearizing(**clean);
    writeLinearized(**clean, Liveness(**clean), sink, copying);
}

/// Counts the bytes that are written.
class CountingSink final : public io::ByteSink {
public:
    explicit CountingSink(io::ByteSink& sink) : sink_(sink) {}

    void write(const char* bytes, std::size_t length) override
    {
        sink_.write(bytes, length);
        count_ += length;
    }
    void copy(io::ByteSource& source, std::int64_t offset, std::uint64_t length) override
    {
        sink_.copy(source, offset, length);
        count_ += length;
    }

    std::uint64_t count() const { return count_; }

private:
    io::ByteSink& sink_;
    std::uint64_t count_ = 0;
};

/// A document that stays above nine tenths of its size although more than a tenth of its pages went
/// earns a warning where that is because what only they showed is still held: more of it than they
/// gave back.
void explainSize(Document& document, const Liveness& live, std::uint64_t writtenBytes)
{
    const std::size_t cut = document.cutPages().size();
    const std::size_t pages = cut + static_cast<std::size_t>(document.pageCount());
    const auto before = static_cast<std::uint64_t>(document.originalSize());
    if (before == 0 || cut * 10 <= pages || writtenBytes * 10 <= before * 9) {
        return;
    }
    const HeldBytes held = heldThoughCut(document, live);
    if (held.bytes == 0 || writtenBytes + held.bytes <= before) {
        return;
    }
    document.warnings().push_back(
        deletingPages + std::to_string(cut) + " of " + std::to_string(pages) + " pages went, but " +
        std::to_string(writtenBytes * 100 / before) +
        " % of the size stays, since something else holds what only they showed: " + held.kinds);
}

/// Writes the document as it is, which must be synchronized.
Outcome write(Document& document, bool verbatim, io::ByteSink& sink, const SaveOptions& options)
{
    if (verbatim && options.linearize) {
        prepareForLinearizing(document);
    }
    std::optional<Liveness> live;
    if (verbatim || !document.cutPages().empty()) {
        live.emplace(document);
        if (Outcome status = live->nothingLeadsToCutPages(); !status) {
            return status;
        }
    }
    CountingSink counting(sink);
    if (verbatim && options.linearize) {
        writeLinearized(document, *live, counting, options);
    } else if (verbatim) {
        writeVerbatim(document, *live, counting, options);
    } else if (options.linearize) {
        rewriteLinearized(document, counting, options);
    } else {
        rewrite(document, counting, options);
    }
    if (live) {
        explainSize(document, *live, counting.count());
    }
    return {};
}

Outcome writeTo(Document& document, io::ByteSink& sink, const SaveOptions& options)
{
    if (Outcome status = content::giveUpUnchangedStreams(document); !status) {
        return status;
    }
    if (Outcome status = settleLostPages(document, options.lostPages); !status) {
        return status;
    }
    const bool verbatim = whyNotVerbatim(document, options).empty();
    const auto degree = verbatim ? deletion::Degree::Recorded : deletion::Degree::Whole;
    if (Outcome status = deletion::synchronize(document, degree); !status) {
        return status;
    }
    Outcome written;
    try {
        written = write(document, verbatim, sink, options);
    } catch (...) {
        written = tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
    if (document.source()) {
        if (Outcome status = document.source()->intact(); !status) {
            return status;
        }
    }
    const bool judged = options.lostPages != LostPages::ShowEmpty &&
                        (!verbatim || content::mayHaveLostContent(document));
    return written && judged ? settleLostContent(document, options.lostPages) : written;
}

/// Tells failures of writing from those of reading, which libqpdf reports alike.
class WatchedSink final : public io::ByteSink {
public:
    WatchedSink(io::ByteSink& sink, std::string path) : sink_(sink), path_(std::move(path)) {}

    void write(const char* bytes, std::size_t length) override
    {
        try {
            sink_.write(bytes, length);
        } catch (const std::exception& exception) {
            failure_ = Error{ErrorCode::FileNotWritable, path_ + ": " + exception.what()};
            throw;
        }
    }

    void copy(io::ByteSource& source, std::int64_t offset, std::uint64_t length) override
    {
        try {
            sink_.copy(source, offset, length);
        } catch (const std::exception& exception) {
            if (source.intact()) {
                failure_ = Error{ErrorCode::FileNotWritable, path_ + ": " + exception.what()};
            }
            throw;
        }
    }

    const Error& failure() const { return failure_; }

private:
    io::ByteSink& sink_;
    std::string path_;
    Error failure_;
};

Outcome writeWatched(Document& document, io::ByteSink& sink, const std::string& path,
                     const SaveOptions& options)
{
    WatchedSink watched(sink, path);
    const Outcome status = writeTo(document, watched, options);
    return status || watched.failure().code == ErrorCode::None
               ? status
               : tl::unexpected<Error>(watched.failure());
}

Outcome toDescriptor(Document& document, int descriptor, const std::string& path,
                     const SaveOptions& options)
{
    // What stands in a file goes; a pipe has nothing and can't be cut.
    if (lseek(descriptor, 0, SEEK_SET) == 0 && ftruncate(descriptor, 0) != 0) {
        return fail(ErrorCode::FileNotWritable, path + ": " + std::strerror(errno));
    }
    io::DescriptorSink sink(descriptor);
    if (Outcome status = writeWatched(document, sink, path, options); !status) {
        return status;
    }
    try {
        sink.flush();
    } catch (const std::exception& exception) {
        return fail(ErrorCode::FileNotWritable, path + ": " + exception.what());
    }
    document.markSaved();
    return {};
}

} // namespace

Outcome toFile(Document& document, const std::string& path, const SaveOptions& options)
{
    if (const auto descriptor = io::descriptorNamed(path)) {
        return toDescriptor(document, *descriptor, path, options);
    }
    Result<io::OutputFile> file = io::OutputFile::create(path, options.existing);
    if (!file) {
        return tl::unexpected<Error>(file.error());
    }
    if (document.source() && document.source()->descriptor() >= 0) {
        file->allowAtMost(io::modeOf(document.source()->descriptor()));
    }
    if (Outcome status = writeWatched(document, *file, path, options); !status) {
        return status;
    }
    if (Outcome status = file->commit(); !status) {
        return status;
    }
    document.setPath(path);
    document.markSaved();
    return {};
}

Result<std::string> copyToString(Document& document, const SaveOptions& options)
{
    StringSink sink;
    if (Outcome status = writeTo(document, sink, options); !status) {
        return tl::unexpected<Error>(status.error());
    }
    return std::move(sink.text);
}

Result<std::string> toString(Document& document, const SaveOptions& options)
{
    Result<std::string> bytes = copyToString(document, options);
    if (bytes) {
        document.markSaved();
    }
    return bytes;
}

} // namespace karvel::saving
