#include "KarvelPDFLibrary/document/MissingTrailer.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace karvel {

namespace {

/// A source with a text behind its end.
class LongerSource final : public io::ByteSource {
public:
    LongerSource(std::shared_ptr<io::ByteSource> source, std::string text)
        : ByteSource(source->name(), source->size() + static_cast<std::int64_t>(text.size())),
          source_(std::move(source)), text_(std::move(text))
    {
    }

    std::size_t readAt(std::int64_t offset, char* buffer, std::size_t length) override
    {
        std::size_t done = 0;
        if (offset < source_->size()) {
            done = source_->readAt(offset, buffer, length);
        }
        const std::int64_t behind = offset + static_cast<std::int64_t>(done) - source_->size();
        if (behind >= 0 && behind < static_cast<std::int64_t>(text_.size())) {
            const auto start = static_cast<std::size_t>(behind);
            const std::size_t count = std::min(length - done, text_.size() - start);
            std::memcpy(buffer + done, text_.data() + start, count);
            done += count;
        }
        return done;
    }

    Outcome intact() const override { return source_->intact(); }

private:
    std::shared_ptr<io::ByteSource> source_;
    std::string text_;
};

/// The last catalog of a file, as a reference.
std::optional<std::string> findCatalog(io::ByteSource& source)
{
    constexpr std::size_t overlap = 4096; // a catalog's dictionary up to its /Type
    std::optional<std::string> found;
    bool hasStreams = false;
    io::forEachWindow(source, overlap, [&](std::string_view text) {
        hasStreams = text.find("/ObjStm") != std::string_view::npos;
        for (std::size_t at = 0;
             !hasStreams && (at = text.find("/Catalog", at)) != std::string_view::npos; ++at) {
            const std::size_t from = at - std::min(at, overlap);
            if (auto reference = objectAround(text.substr(from, at - from))) {
                found = std::move(reference);
            }
        }
        return !hasStreams;
    });
    return hasStreams ? std::nullopt : found;
}

} // namespace

std::optional<std::string> objectAround(std::string_view before)
{
    const std::size_t keyword = before.rfind("obj");
    if (keyword == std::string_view::npos || keyword < 4) {
        return std::nullopt;
    }
    std::size_t begin = keyword;
    int words = 0;
    bool inWord = false;
    while (begin > 0 && words < 3) {
        const char ch = before[begin - 1];
        const bool digit = ch >= '0' && ch <= '9';
        if (!digit && !index::isWhiteSpace(ch)) {
            break;
        }
        words += digit && !inWord ? 1 : 0;
        if (words < 3) {
            --begin;
        }
        inWord = digit;
    }
    std::size_t at = begin;
    std::uint64_t number = 0;
    std::uint64_t generation = 0;
    at = index::skipSpace(before, at);
    const bool numbered =
        index::readUnsigned(before, at, number) && number > 0 && number <= 0x7FFFFFFF;
    at = index::skipSpace(before, at);
    if (!numbered || !index::readUnsigned(before, at, generation)) {
        return std::nullopt;
    }
    return std::to_string(number) + " " + std::to_string(generation) + " R";
}

std::shared_ptr<io::ByteSource> withStreamEnded(const std::shared_ptr<io::ByteSource>& source)
{
    constexpr std::string_view keyword = "stream"; // the end of "endstream" as well
    constexpr std::string_view end = "end";
    bool isOpen = false;
    io::forEachWindow(*source, end.size() + keyword.size() + 1, [&](std::string_view text) {
        for (std::size_t at = text.rfind(keyword); at != std::string_view::npos && at > 0;
             at = text.rfind(keyword, at - 1)) {
            const bool ends = at >= end.size() && text.substr(at - end.size(), end.size()) == end;
            const char behind = at + keyword.size() < text.size() ? text[at + keyword.size()] : 'x';
            if (ends || behind == '\n' || behind == '\r') {
                isOpen = !ends;
                break;
            }
        }
        return true;
    });
    return isOpen ? std::make_shared<LongerSource>(source, "\nendstream\nendobj\n%%EOF\n")
                  : nullptr;
}

std::shared_ptr<io::ByteSource> withTrailerAdded(const std::shared_ptr<io::ByteSource>& source)
{
    const std::optional<std::string> catalog = findCatalog(*source);
    if (!catalog) {
        return nullptr;
    }
    return std::make_shared<LongerSource>(source, "\ntrailer\n<< /Root " + *catalog +
                                                      " >>\nstartxref\n0\n%%EOF\n");
}

std::shared_ptr<io::ByteSource> withTrailerAdded(const std::shared_ptr<io::ByteSource>& source,
                                                 const EncryptionTraces& traces)
{
    const std::optional<std::string> catalog = findCatalog(*source);
    if (!catalog || traces.dictionary.empty()) {
        return nullptr;
    }
    // A trailer in the file would come before one that merely follows it, so this one has a table.
    // Its one entry leads nowhere, which makes libqpdf look for the objects.
    const std::string table =
        std::to_string(traces.object > 0 ? traces.object : std::stoi(*catalog)) +
        " 1\n0000000001 00000 n \n";
    return std::make_shared<LongerSource>(
        source, "\nxref\n" + table + "trailer\n<< /Size 1 /Root " + *catalog + " /Encrypt " +
                    traces.dictionary +
                    (traces.identifier.empty() ? "" : " /ID " + traces.identifier) +
                    " >>\nstartxref\n" + std::to_string(source->size() + 1) + "\n%%EOF\n");
}

} // namespace karvel
