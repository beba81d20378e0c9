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

/// A cross-reference stream (ISO 32000-2, 7.5.8) of all entries.
std::string streamOf(const CrossReferences& read, const std::string& id)
{
    constexpr std::uint64_t lower = 0xFFFFFFFF;
    const auto isMember = [](const CrossReference& entry) {
        return entry.kind == CrossReference::Kind::InObjectStream;
    };
    const auto second = [&](const CrossReference& entry) {
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
std::string fileOf(const CrossReferences& read, const DictionaryText& trailer)
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
    file += streamOf(read, number + " " + std::to_string(one->generation));
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
                             const CrossReferences& read)
{
    const auto trailer = DictionaryText::read(read.trailer);
    const std::string known = trailer ? fileOf(read, *trailer) : std::string();
    auto whole = std::make_shared<io::WindowedInput>(source);
    if (known.empty()) {
        file.processInputSource(whole);
        return;
    }
    const auto input = std::make_shared<ExchangedInput>(
        std::make_shared<BufferInputSource>(source->name(), known));
    file.processInputSource(input);
    input->exchange(whole);
    restoreTrailer(file.getTrailer(), *trailer);
}

} // namespace karvel::index
