#include "KarvelPDFLibrary/document/LostEncryption.h"

#include "KarvelPDFLibrary/document/MissingTrailer.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace karvel {

namespace {

/// The longest of the names that tell, with room for some "#" escapes.
constexpr std::size_t longestName = 40;

/// How far apart the two password entries of one dictionary stand at most, and how far a name and
/// its value.
constexpr std::size_t nearby = 2048;

/// The size of an encryption dictionary, and how many places are looked at closely that may be in
/// one: a file full of such names must not cost more than its size.
constexpr std::size_t largestDictionary = 64 * 1024;
constexpr int mostPlaces = 1000;

class TraceFinder {
public:
    /// Looks at a part of the file.
    void look(std::string_view text)
    {
        text_ = text;
        ownerAt_ = userAt_ = std::string_view::npos;
        for (std::size_t at = 0; (at = text.find('/', at)) != std::string_view::npos;) {
            const std::size_t start = ++at;
            while (at < text.size() && at - start < longestName && !index::isWhiteSpace(text[at]) &&
                   !index::isDelimiter(text[at])) {
                ++at;
            }
            lookAtName(index::decodedName(text.substr(start, at - start)), start - 1, at);
        }
    }

    EncryptionTraces found;

private:
    void lookAtName(const std::string& name, std::size_t start, std::size_t end)
    {
        if (name == "CFM" || name == "StmF" || name == "StrF" || name == "Recipients") {
            // Four bytes are met by chance in what is compressed: what follows must fit, too.
            found.any = found.any || name == "Recipients" || startsValue(end);
        } else if (name == "Filter") {
            lookAtFilter(start, end);
        } else if (name == "Encrypt") {
            lookAtEntry(end);
        } else if (name == "ID") {
            lookAtIdentifier(end);
        } else if (name == "O" || name == "U") {
            lookAtPasswordEntry(name == "O" ? ownerAt_ : userAt_, start, end);
        }
    }

    /// The text from the value after a name on.
    std::string_view valueAfter(std::size_t end, std::size_t most) const
    {
        const std::size_t space = index::skipSpace(text_.substr(end, nearby), 0);
        return text_.substr(std::min(end + space, text_.size()), most);
    }

    /// Whether a name or a reference comes next.
    bool startsValue(std::size_t end) const
    {
        const std::string_view rest = valueAfter(end, longestName);
        return (!rest.empty() && rest.front() == '/') || index::readReference(rest).has_value();
    }

    void lookAtFilter(std::size_t start, std::size_t end)
    {
        const std::string_view rest = valueAfter(end, longestName);
        std::size_t length = rest.empty() || rest.front() != '/' ? 0 : 1;
        while (length > 0 && length < rest.size() && !index::isWhiteSpace(rest[length]) &&
               !index::isDelimiter(rest[length])) {
            ++length;
        }
        if (length > 0 && index::decodedName(rest.substr(1, length - 1)) == "Standard") {
            found.any = true;
            takeObjectAround(start);
        }
    }

    /// Password data are strings; attributes of structure and number formats have such keys, too.
    void lookAtPasswordEntry(std::size_t& place, std::size_t start, std::size_t end)
    {
        const std::string_view value = valueAfter(end, 2);
        if (places_ >= mostPlaces || value.empty() ||
            (value.front() != '(' && (value.front() != '<' || value == "<<"))) {
            return;
        }
        place = start;
        const std::size_t first = std::min(ownerAt_, userAt_);
        const std::size_t last = std::max(ownerAt_, userAt_);
        if (last == std::string_view::npos || last - first >= nearby) {
            return;
        }
        ++places_;
        if (text_.substr(first, last - first).find("endobj") == std::string_view::npos) {
            found.any = true;
            takeObjectAround(start);
        }
    }

    /// What a trailer says that libqpdf did not take for one.
    void lookAtEntry(std::size_t end)
    {
        const std::string_view rest = valueAfter(end, largestDictionary);
        const bool isDictionary = rest.substr(0, 2) == "<<";
        found.any = found.any || isDictionary || startsValue(end);
        if (isDictionary) {
            takeDictionary(rest, {}, 0);
        }
    }

    void takeObjectAround(std::size_t position)
    {
        const std::size_t from = position - std::min(position, largestDictionary);
        const std::string_view before = text_.substr(from, position - from);
        const auto object = ++places_ > mostPlaces ? std::nullopt : objectAround(before);
        if (object) {
            takeDictionary(valueAfter(from + before.rfind("obj") + 3, largestDictionary), *object,
                           std::stoi(*object));
        }
    }

    void takeDictionary(std::string_view from, const std::string& reference, int object)
    {
        const auto dictionary =
            ++places_ > 2 * mostPlaces ? std::nullopt : index::DictionaryText::read(from);
        if (!dictionary || index::trimmed(dictionary->value("Filter")) != "/Standard") {
            return;
        }
        const std::string_view text = index::trimmed(dictionary->value("R"));
        std::size_t at = 0;
        std::uint64_t revision = 0;
        const bool whole = index::readUnsigned(text, at, revision) && revision >= 2 &&
                           revision <= 6 && !dictionary->value("O").empty() &&
                           !dictionary->value("U").empty();
        if (whole) {
            found.dictionary = reference.empty() ? dictionary->with({}) : reference;
            found.object = object;
            found.revision = static_cast<int>(revision);
        }
    }

    void lookAtIdentifier(std::size_t end)
    {
        class Nothing final : public index::ScanSink {
        public:
            void reference(std::uint32_t, std::uint32_t) override { plain = false; }
            void name(std::string_view) override { plain = false; }
            void beforeEntry(std::string_view) override {}
            void afterEntry(std::string_view, std::string_view) override { plain = false; }
            bool plain = true;
        } sink;
        const std::string_view value = valueAfter(end, nearby);
        index::ValueScanner scanner(value, sink);
        if (value.empty() || value.front() != '[' ||
            scanner.scan(0) != index::ScanResult::Complete || !sink.plain) {
            return;
        }
        const std::string_view array = value.substr(0, scanner.position());
        const std::size_t first = index::skipSpace(array, 1);
        if (array[first] == '(' || array[first] == '<') {
            found.identifier = std::string(array);
        }
    }

    std::string_view text_;
    std::size_t ownerAt_ = 0;
    std::size_t userAt_ = 0;
    int places_ = 0; // looked at closely
};

} // namespace

EncryptionTraces tracesOfEncryption(io::ByteSource& source)
{
    TraceFinder finder;
    io::forEachWindow(source, largestDictionary, [&](std::string_view text) {
        finder.look(text);
        return true;
    });
    return finder.found;
}

} // namespace karvel
