#include "KarvelPDFLibrary/signatures/Signatures.h"

#include "KarvelPDFLibrary/form_fields/FieldTree.h"
#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/metadata/Dates.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace karvel::signatures {

namespace {

struct SignatureField {
    int index; // from 1, among all fields of the form
    QPDFObjectHandle object;
};

std::vector<SignatureField> signatureFields(Document& document)
{
    std::vector<SignatureField> found;
    int index = 0;
    for (const form_fields::Field& field : form_fields::terminalFields(document)) {
        ++index;
        if (field.type == "/Sig") {
            found.push_back({index, field.object});
        }
    }
    return found;
}

Result<SignatureField> signatureField(Document& document, int signature)
{
    const std::vector<SignatureField> fields = signatureFields(document);
    if (signature < 1 || static_cast<std::size_t>(signature) > fields.size()) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": has no signature field " + std::to_string(signature));
    }
    return fields[static_cast<std::size_t>(signature) - 1];
}

/// A field's value, its own or inherited (ISO 32000-2, 12.7.4.1).
QPDFObjectHandle valueOf(QPDFObjectHandle field)
{
    std::unordered_set<int> seen;
    while (field.isDictionary() &&
           (!field.isIndirect() || seen.insert(field.getObjectID()).second)) {
        if (field.hasKey("/V")) {
            return field.getKey("/V");
        }
        field = field.getKey("/Parent");
    }
    return QPDFObjectHandle::newNull();
}

/// The numbers of a byte range; nothing when it is none that can hold of such a file.
std::optional<std::array<std::int64_t, 4>> byteRange(QPDFObjectHandle value, std::int64_t size)
{
    QPDFObjectHandle range = value.getKey("/ByteRange");
    std::array<std::int64_t, 4> numbers = {};
    if (!range.isArray() || range.getArrayNItems() != static_cast<int>(numbers.size())) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        QPDFObjectHandle number = range.getArrayItem(static_cast<int>(i));
        if (!number.isInteger() || number.getIntValue() < 0 || number.getIntValue() > size) {
            return std::nullopt;
        }
        numbers[i] = number.getIntValue();
    }
    const auto [first, firstLength, second, secondLength] = numbers;
    return first + firstLength <= second && second + secondLength <= size ? std::optional(numbers)
                                                                          : std::nullopt;
}

std::string bytesAt(io::ByteSource& source, std::int64_t offset, std::size_t length)
{
    std::string bytes(length, '\0');
    bytes.resize(source.readAt(offset, bytes.data(), length));
    return bytes;
}

/// Whether what a byte range leaves out is the signature's own contents and nothing else (ISO
/// 32000-2, 12.8.1).
bool leavesOutContents(io::ByteSource& source, QPDFObjectHandle value, std::int64_t begin,
                       std::int64_t end)
{
    QPDFObjectHandle contents = value.getKey("/Contents");
    const std::string expected = contents.isString() ? contents.getStringValue() : std::string();
    // White space and a digit left out are allowed; more than that would be room for other things.
    if (end - begin < 2 || static_cast<std::size_t>(end - begin) > 4 * expected.size() + 64) {
        return false;
    }
    const std::string gap = bytesAt(source, begin, static_cast<std::size_t>(end - begin));
    if (gap.size() != static_cast<std::size_t>(end - begin) || gap.front() != '<' ||
        gap.back() != '>') {
        return false;
    }
    const std::string digits = gap.substr(1, gap.size() - 2);
    return digits.find_first_not_of("0123456789abcdefABCDEF \t\r\n\f") == std::string::npos &&
           QPDFObjectHandle::parse(gap).getStringValue() == expected;
}

/// Whether a revision of the file ends at an offset.
bool endsRevision(io::ByteSource& source, std::int64_t end)
{
    constexpr std::int64_t most = 16;
    const std::int64_t begin = std::max<std::int64_t>(0, end - most);
    std::string last = bytesAt(source, begin, static_cast<std::size_t>(end - begin));
    last.erase(last.find_last_not_of(" \t\r\n") + 1);
    constexpr std::string_view mark = "%%EOF";
    return last.size() >= mark.size() &&
           last.compare(last.size() - mark.size(), mark.size(), mark) == 0;
}

Coverage coverageOf(Document& document, QPDFObjectHandle value)
{
    io::ByteSource* source = document.source().get();
    const auto range =
        value.isDictionary() && source != nullptr ? byteRange(value, source->size()) : std::nullopt;
    if (!range) {
        return Coverage::Unknown;
    }
    const auto [first, firstLength, second, secondLength] = *range;
    const std::int64_t end = second + secondLength;
    if (first != 0 || !leavesOutContents(*source, value, firstLength, second)) {
        return Coverage::Less;
    }
    return end == source->size()        ? Coverage::WholeFile
           : endsRevision(*source, end) ? Coverage::EarlierRevision
                                        : Coverage::Less;
}

} // namespace

int count(Document& document)
{
    return static_cast<int>(signatureFields(document).size());
}

Result<int> fieldOf(Document& document, int signature)
{
    return signatureField(document, signature).map([](const SignatureField& field) {
        return field.index;
    });
}

Result<bool> isSigned(Document& document, int signature)
{
    return signatureField(document, signature).map([](const SignatureField& field) {
        return valueOf(field.object).isDictionary();
    });
}

Result<std::string> textOf(Document& document, int signature, Text text)
{
    constexpr std::array<const char*, 7> keys = {"/Name", "/Reason", "/Location", "/ContactInfo",
                                                 "/M",    "/Filter", "/SubFilter"};
    return signatureField(document, signature).map([&](const SignatureField& field) {
        QPDFObjectHandle value = valueOf(field.object);
        QPDFObjectHandle entry = value.isDictionary()
                                     ? value.getKey(keys.at(static_cast<std::size_t>(text) - 1))
                                     : value;
        if (entry.isName()) {
            return entry.getName().substr(1);
        }
        const std::string found = entry.isString() ? entry.getUTF8Value() : std::string();
        const auto date = text == Text::Date ? metadata::fromPdf(found) : std::nullopt;
        return date ? metadata::toIso8601(*date) : found;
    });
}

Result<Coverage> coverageOf(Document& document, int signature)
{
    return signatureField(document, signature).map([&](const SignatureField& field) {
        return coverageOf(document, valueOf(field.object));
    });
}

} // namespace karvel::signatures
