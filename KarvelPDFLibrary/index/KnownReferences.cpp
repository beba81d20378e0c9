#include "KarvelPDFLibrary/index/KnownReferences.h"

#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/io/WindowedInput.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <qpdf/BufferInputSource.hh>

namespace karvel::index {

namespace {

/// What libqpdf reads: first another text, then the file itself.
class ExchangedInput final : public InputSource {
public:
    explicit ExchangedInput(std::shared_ptr<InputSource> first) : input_(std::move(first)) {}

    void exchange(std::shared_ptr<InputSource> input)
    {
        input_ = std::move(input);
        fastTell(); // gives up the few bytes that the base class keeps, which lie further back
    }

    qpdf_offset_t findAndSkipNextEOL() override { return input_->findAndSkipNextEOL(); }
    std::string const& getName() const override { return input_->getName(); }
    qpdf_offset_t tell() override { return input_->tell(); }
    void seek(qpdf_offset_t offset, int whence) override { input_->seek(offset, whence); }
    void rewind() override { input_->rewind(); }
    size_t read(char* buffer, size_t length) override
    {
        const size_t done = input_->read(buffer, length);
        last_offset = input_->getLastOffset();
        return done;
    }
    void unreadCh(char ch) override { input_->unreadCh(ch); }

private:
    std::shared_ptr<InputSource> input_;
};

/// Where members of object streams stand apart: behind any file, each farther from the next than it
/// can be long, since the streams of an index are shorter.
constexpr unsigned lengthBits = 29;
constexpr qpdf_offset_t firstAddress = qpdf_offset_t(1) << 61U;

std::uint64_t addressOf(std::uint64_t number)
{
    return static_cast<std::uint64_t>(firstAddress) + (number << lengthBits);
}

/// A file, and behind it the members of its object streams as objects.
class FileWithMembers final : public InputSource {
public:
    FileWithMembers(std::shared_ptr<InputSource> file, const StreamMembers& members)
        : file_(std::move(file)), members_(members)
    {
    }

    qpdf_offset_t findAndSkipNextEOL() override
    {
        if (!inMembers_) {
            return file_->findAndSkipNextEOL();
        }
        at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
        const qpdf_offset_t end = tell();
        at_ = std::min(text_.find_first_not_of("\r\n", at_), text_.size());
        return end;
    }
    std::string const& getName() const override { return file_->getName(); }
    qpdf_offset_t tell() override
    {
        return inMembers_ ? start_ + static_cast<qpdf_offset_t>(at_) : file_->tell();
    }
    void seek(qpdf_offset_t offset, int whence) override
    {
        const qpdf_offset_t to = whence == SEEK_CUR ? tell() + offset : offset;
        inMembers_ = whence != SEEK_END && to >= firstAddress;
        if (inMembers_) {
            enter(to);
        } else {
            file_->seek(to, whence == SEEK_END ? SEEK_END : SEEK_SET);
        }
    }
    void rewind() override { seek(0, SEEK_SET); }
    size_t read(char* buffer, size_t length) override
    {
        if (!inMembers_) {
            const size_t done = file_->read(buffer, length);
            last_offset = file_->getLastOffset();
            return done;
        }
        last_offset = tell();
        const size_t done = text_.copy(buffer, length, at_);
        at_ += done;
        return done;
    }
    void unreadCh(char ch) override
    {
        if (!inMembers_) {
            file_->unreadCh(ch);
        } else if (at_ > 0) {
            --at_;
        }
    }

private:
    void enter(qpdf_offset_t to)
    {
        const auto number = static_cast<std::uint32_t>((to - firstAddress) >> lengthBits);
        const auto start = static_cast<qpdf_offset_t>(addressOf(number));
        if (start != start_) {
            text_ = textOf(number);
            start_ = start;
        }
        at_ = std::min(static_cast<std::size_t>(to - start), text_.size());
    }

    /// As in a file, with something after it; empty where there is no such member.
    std::string textOf(std::uint32_t number)
    {
        if (!members_.index->contains(number) || members_.index->object(number).container == 0) {
            return {};
        }
        const IndexedObject& object = members_.index->object(number);
        const DecodedStreams::Stream stream = members_.streams->plain(
            object.container, members_.index->object(object.container), SIZE_MAX);
        if (!stream || object.end > stream->length() || object.start > object.end) {
            return {};
        }
        std::string text = std::to_string(number) + " 0 obj\n";
        text.append(stream->text, object.start, object.end - object.start);
        return text += "\nendobj\n%";
    }

    std::shared_ptr<InputSource> file_;
    StreamMembers members_;
    bool inMembers_ = false;
    qpdf_offset_t start_ = 0; // of the member whose text is at hand
    std::string text_;
    std::size_t at_ = 0;
};

std::string bytesOf(std::uint64_t value, std::size_t width)
{
    std::string bytes(width, '\0');
    for (std::size_t i = width; i-- > 0; value >>= 8U) {
        bytes[i] = static_cast<char>(value);
    }
    return bytes;
}

std::size_t widthOf(std::uint64_t highest)
{
    std::size_t width = 1;
    while (width < 8 && highest >> (8 * width) != 0) {
        ++width;
    }
    return width;
}

/// A cross-reference stream (ISO 32000-2, 7.5.8) of all entries. Members of object streams may
/// stand apart.
std::string streamOf(const CrossReferences& read, const std::string& id, bool apart)
{
    constexpr std::uint64_t lower = 0xFFFFFFFF;
    const auto isMember = [apart](const CrossReference& entry) {
        return entry.kind == CrossReference::Kind::InObjectStream && !apart;
    };
    const auto second = [&](const CrossReference& entry) {
        if (entry.kind == CrossReference::Kind::InObjectStream && apart) {
            return addressOf(static_cast<std::uint64_t>(&entry - read.entries.data()));
        }
        return isMember(entry) ? entry.place >> 32U : entry.place;
    };
    const auto third = [&](const CrossReference& entry) {
        return isMember(entry) ? entry.place & lower : entry.generation;
    };
    std::uint64_t highestSecond = 0;
    std::uint64_t highestThird = 0;
    for (const CrossReference& entry : read.entries) {
        highestSecond = std::max(highestSecond, second(entry));
        highestThird = std::max(highestThird, third(entry));
    }
    const std::size_t secondWidth = widthOf(highestSecond);
    const std::size_t thirdWidth = widthOf(highestThird);
    std::string data;
    data.reserve(read.entries.size() * (1 + secondWidth + thirdWidth));
    for (const CrossReference& entry : read.entries) {
        data += static_cast<char>(entry.kind == CrossReference::Kind::None ? 0
                                  : isMember(entry)                        ? 2
                                                                           : 1);
        data += bytesOf(second(entry), secondWidth);
        data += bytesOf(third(entry), thirdWidth);
    }
    return id + " obj\n<< /Type /XRef /Size " + std::to_string(read.entries.size()) + " /W [1 " +
           std::to_string(secondWidth) + " " + std::to_string(thirdWidth) + "] /Length " +
           std::to_string(data.size()) + " >>\nstream\n" + data + "\nendstream\nendobj\n";
}

/// The cross-reference data as a file of nothing else. Its trailer is the file's. The stream stands
/// beside a table and has the number of an object in that: libqpdf keeps other streams that it
/// reads as objects of the file. Empty when no object can be in a table.
std::string fileOf(const CrossReferences& read, const DictionaryText& trailer, bool apart)
{
    constexpr std::uint64_t highestInTable = 9'999'999'999;
    const auto one =
        std::find_if(read.entries.begin(), read.entries.end(), [](const CrossReference& entry) {
            return entry.kind == CrossReference::Kind::InFile && entry.place <= highestInTable;
        });
    if (one == read.entries.end()) {
        return {};
    }
    const std::string number = std::to_string(one - read.entries.begin());
    std::string file = "%PDF-" + read.version + "\n";
    const std::size_t stream = file.size();
    file += streamOf(read, number + " " + std::to_string(one->generation), apart);
    const std::size_t table = file.size();
    std::array<char, 32> row = {};
    std::snprintf(row.data(), row.size(), "%010llu %05u n \n",
                  static_cast<unsigned long long>(one->place),
                  static_cast<unsigned>(one->generation));
    file += "xref\n" + number + " 1\n" + row.data() + "trailer\n" +
            trailer.with({{"Prev", ""}, {"XRefStm", std::to_string(stream)}}) + "\nstartxref\n" +
            std::to_string(table) + "\n%%EOF\n";
    return file;
}

/// Gives the trailer the entries that it has in the file.
void restoreTrailer(QPDFObjectHandle trailer, const DictionaryText& known)
{
    for (const std::string key : {"Prev", "XRefStm"}) {
        if (known.has(key)) {
            trailer.replaceKey("/" + key, QPDFObjectHandle::parse(std::string(known.value(key))));
        } else {
            trailer.removeKey("/" + key);
        }
    }
}

} // namespace

void openWithKnownReferences(QPDF& file, std::shared_ptr<io::ByteSource> source,
                             const CrossReferences& read, const StreamMembers& members)
{
    const bool apart = members.index != nullptr;
    const auto trailer = DictionaryText::read(read.trailer);
    const std::string known = trailer ? fileOf(read, *trailer, apart) : std::string();
    auto whole = std::make_shared<io::WindowedInput>(source);
    if (known.empty()) {
        file.processInputSource(whole);
        return;
    }
    const auto input = std::make_shared<ExchangedInput>(
        std::make_shared<BufferInputSource>(source->name(), known));
    file.processInputSource(input);
    if (apart) {
        input->exchange(std::make_shared<FileWithMembers>(whole, members));
    } else {
        input->exchange(whole);
    }
    restoreTrailer(file.getTrailer(), *trailer);
}

} // namespace karvel::index
