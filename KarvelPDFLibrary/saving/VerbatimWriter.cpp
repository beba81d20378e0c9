#include "KarvelPDFLibrary/saving/VerbatimWriter.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/saving/CrossReferences.h"
#include "KarvelPDFLibrary/saving/EscapedNames.h"
#include "KarvelPDFLibrary/saving/LinearizedWriter.h"
#include "KarvelPDFLibrary/saving/ObjectText.h"
#include "KarvelPDFLibrary/saving/Trailer.h"
#include "KarvelPDFLibrary/saving/VersionNeeds.h"

#include <algorithm>
#include <cstdint>

namespace karvel::saving {

namespace {

using index::IndexedObject;
using index::ReferenceIndex;

class VerbatimCopy {
public:
    VerbatimCopy(Document& document, const Liveness& live, io::ByteSink& sink,
                 const SaveOptions& options)
        : document_(document), index_(*document.index()), objects_(document.objects()), sink_(sink),
          live_(live), identifier_(options.deterministicIdentifier)
    {
        resizeLarge(entries_, live.size());
        if (document.isEncrypted()) {
            cipher_ = Cipher::of(document.file());
        }
    }

    void run()
    {
        put("%PDF-" + versionToCopy(document_) + "\n%\xe2\xe3\xcf\xd3\n");
        planObjectStreams();
        copyUnchanged();
        writeObjectStreams();
        writeChanged();
        writeEnd();
    }

private:
    void put(const std::string& text)
    {
        identifier_.written(text);
        putUnnoted(text);
    }

    /// For what follows from all the rest, which the identifier takes note of.
    void putUnnoted(const std::string& text)
    {
        sink_.write(text.data(), text.size());
        offset_ += text.size();
    }

    bool isUnchanged(std::uint32_t number) const
    {
        return objects_.unchanged(static_cast<int>(number)) != nullptr;
    }

    void planObjectStreams();
    void copyUnchanged();
    void copyRange(std::uint64_t start, std::uint64_t end);
    void writeObjectStreams();
    std::string objectStream(const index::ObjectStreamMembers& stream);
    void writeChanged();
    std::string changedText(std::uint32_t number, const Cipher* cipher);
    void writeEnd();
    std::string trailer(std::size_t size);

    Document& document_;
    const ReferenceIndex& index_;
    ObjectView objects_;
    io::ByteSink& sink_;
    const Liveness& live_;
    std::optional<Cipher> cipher_;
    std::vector<CrossReference> entries_;
    std::uint64_t offset_ = 0;
    FileIdentifier identifier_;

    /// Object streams that are copied whole, and those that are written anew.
    std::vector<std::uint32_t> wholeStreams_;
    std::vector<const index::ObjectStreamMembers*> partStreams_;
};

void VerbatimCopy::planObjectStreams()
{
    for (const index::ObjectStreamMembers& stream : index_.objectStreams()) {
        const auto stays = [this](std::uint32_t member) {
            return live_.isLive(member) && isUnchanged(member);
        };
        // A stream that refers to another one it extends would keep that one's members.
        const bool whole = index_.object(stream.object).referenceCount == 0 &&
                           stream.allMembersAreCurrent &&
                           std::all_of(stream.members.begin(), stream.members.end(), stays);
        if (whole) {
            wholeStreams_.push_back(stream.object);
            for (std::size_t i = 0; i < stream.members.size(); ++i) {
                entries_[stream.members[i]] = {CrossReference::Kind::InObjectStream,
                                               static_cast<std::uint32_t>(i), stream.object};
            }
        } else if (std::any_of(stream.members.begin(), stream.members.end(),
                               [this](std::uint32_t member) { return live_.isLive(member); })) {
            partStreams_.push_back(&stream);
        }
    }
    std::sort(wholeStreams_.begin(), wholeStreams_.end());
}

void VerbatimCopy::copyRange(std::uint64_t start, std::uint64_t end)
{
    sink_.copy(*document_.source(), static_cast<std::int64_t>(start), end - start);
    offset_ += end - start;
    identifier_.copied(start, end);
}

void VerbatimCopy::copyUnchanged()
{
    std::uint64_t start = 0;
    std::uint64_t end = 0;
    std::uint64_t pending = 0; // bytes of the range that is not copied yet
    for (const std::uint32_t number : index_.fileOrder()) {
        const IndexedObject& object = index_.object(number);
        const bool whole = object.kind == index::Kind::ObjectStream &&
                           std::binary_search(wholeStreams_.begin(), wholeStreams_.end(), number);
        const bool used = whole || (live_.isLive(number) && isUnchanged(number) &&
                                    object.kind != index::Kind::ObjectStream);
        if (!used) {
            continue;
        }
        if (pending > 0 && object.start != end) {
            copyRange(start, end);
            pending = 0;
        }
        if (pending == 0) {
            start = object.start;
        }
        entries_[number] = {CrossReference::Kind::InFile, object.generation, offset_ + pending};
        end = object.end;
        pending = end - start;
    }
    if (pending > 0) {
        copyRange(start, end);
    }
}

/// The present value of an object that was changed or added.
std::string VerbatimCopy::changedText(std::uint32_t number, const Cipher* cipher)
{
    const auto object = static_cast<int>(number);
    const std::string* text = objects_.changedText(object);
    return text != nullptr ? *text : objectText(objects_.object(object), cipher);
}

/// An object stream of the members that stay, at their present values.
std::string VerbatimCopy::objectStream(const index::ObjectStreamMembers& stream)
{
    const index::DecodedStreams::Stream old = document_.objectStream(stream.object);
    std::string header;
    std::string body;
    std::uint32_t count = 0;
    for (const std::uint32_t member : stream.members) {
        if (!live_.isLive(member)) {
            continue;
        }
        header += std::to_string(member) + " " + std::to_string(body.size()) + " ";
        if (isUnchanged(member)) {
            const IndexedObject& object = index_.object(member);
            body.append(old->text, object.start, object.end - object.start);
        } else {
            // Strings in an object stream are enciphered with the stream, not by themselves.
            body += changedText(member, nullptr);
        }
        body += '\n';
        entries_[member] = {CrossReference::Kind::InObjectStream, count, stream.object};
        ++count;
    }
    std::string packed = deflated(header + body);
    if (cipher_) {
        packed = cipher_->stream(packed, QPDFObjGen(static_cast<int>(stream.object), 0));
    }
    return "<< /Type /ObjStm /N " + std::to_string(count) + " /First " +
           std::to_string(header.size()) + " /Filter /FlateDecode /Length " +
           std::to_string(packed.size()) + " >>\nstream\n" + packed + "\nendstream";
}

void VerbatimCopy::writeObjectStreams()
{
    for (const index::ObjectStreamMembers* stream : partStreams_) {
        const std::string text = objectStream(*stream);
        entries_[stream->object] = {CrossReference::Kind::InFile, 0, offset_};
        put(numbered(static_cast<int>(stream->object), 0, text));
    }
}

void VerbatimCopy::writeChanged()
{
    for (std::uint32_t number = 1; number < live_.size(); ++number) {
        const bool inStream = index_.contains(number) && index_.object(number).container != 0;
        if (!live_.isLive(number) || isUnchanged(number) || inStream) {
            continue;
        }
        const int generation = objects_.idOf(static_cast<int>(number)).getGen();
        const std::string text = changedText(number, cipher_ ? &*cipher_ : nullptr);
        entries_[number] = {CrossReference::Kind::InFile, static_cast<std::uint32_t>(generation),
                            offset_};
        put(numbered(static_cast<int>(number), generation, text));
    }
}

std::string VerbatimCopy::trailer(std::size_t size)
{
    return "/Size " + std::to_string(size) + trailerEntries(document_) + " " +
           identifier_.entry(document_);
}

void VerbatimCopy::writeEnd()
{
    const std::uint64_t start = offset_;
    if (!index_.usesCrossReferenceStream()) {
        putCrossReferenceTable(entries_, [this](const std::string& part) { putUnnoted(part); });
        put("trailer\n<< " + trailer(entries_.size()) + " >>\n");
    } else {
        const auto number = static_cast<std::uint32_t>(entries_.size());
        entries_.push_back({CrossReference::Kind::InFile, 0, start});
        const CrossReferenceStream stream = crossReferenceStream(entries_);
        const std::string text = "<< /Type /XRef " + trailer(entries_.size()) + " " +
                                 stream.dictionaryEntries + " /Length " +
                                 std::to_string(stream.data.size()) + " >>\nstream\n" +
                                 stream.data + "\nendstream";
        put(numbered(static_cast<int>(number), 0, text));
    }
    put("startxref\n" + std::to_string(start) + "\n%%EOF\n");
}

/// Whether anything but object streams refers to one, or to what looks like one, as it may in a
/// document that was damaged. The linearised file has object streams of its own.
bool leadsToObjectStreams(const index::ReferenceIndex& index)
{
    const auto isStream = [&](std::uint32_t number) {
        return index.contains(number) && index.object(number).kind == index::Kind::ObjectStream;
    };
    for (std::uint32_t number = 1; number < index.size(); ++number) {
        const index::IndexedObject& object = index.object(number);
        const std::uint32_t* references = index.references().data() + object.firstReference;
        if (object.kind != index::Kind::ObjectStream &&
            std::any_of(references, references + object.referenceCount, isStream)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string whyNotVerbatim(Document& document, const SaveOptions& options)
{
    if (options.way == Way::Rewrite) {
        return "rewriting was asked for";
    }
    if (document.index() == nullptr) {
        return document.source() ? document.indexRefusal() : "a new document";
    }
    if (options.objectStreams != ObjectStreams::Keep || options.streamData != StreamData::Keep ||
        options.recompressFlate || options.readable || !document.forcedVersion.empty()) {
        return "objects are to be written in another form";
    }
    if (options.linearize && document.originalSize() > mostLinearizedBytes) {
        return "the document is too large to be linearised";
    }
    if (options.linearize && leadsToObjectStreams(*document.index())) {
        return "something refers to an object stream";
    }
    if (document.encryption.kind != EncryptionPlan::Kind::Keep) {
        return "the encryption is to be changed";
    }
    if (options.encrypting == Encrypting::Never && document.isEncrypted()) {
        return "the encryption is to be left out";
    }
    if (document.isEncrypted() && !Cipher::of(document.file())) {
        return "a cipher that is not known here";
    }
    return {};
}

void writeVerbatim(Document& document, const Liveness& live, io::ByteSink& sink,
                   const SaveOptions& options)
{
    VerbatimCopy(document, live, sink, options).run();
}

} // namespace karvel::saving
