#include "VantoraHost/core/documents/DocumentInfo.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/OutlineEntries.h"
#include "VantoraHost/core/PaperFormats.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/documents/PdfLibrary.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

namespace vantora {

namespace {

using Library = KarvelPDFLibraryCPDylibCPP1311;

// What a function answers; nothing when it fails, above all because this version lacks it.
template <class Value>
std::optional<Value> answer(Library& library, Value (Library::*function)())
{
    library.ClearLastError();
    const Value value = (library.*function)();
    return lastLibraryCode(library) == LibraryCode::None ? std::optional<Value>(value)
                                                         : std::nullopt;
}

std::optional<bool> yesOrNo(Library& library, int (Library::*function)())
{
    const auto value = answer(library, function);
    return value ? std::optional<bool>(*value != 0) : std::nullopt;
}

std::optional<std::string> encryptionText(Library& library)
{
    const auto algorithm = answer(library, &Library::EncryptionAlgorithm);
    if (!algorithm) {
        return std::nullopt;
    }
    switch (*algorithm) {
    case 0:
        return "none";
    case 1:
        return "RC4 40 bits";
    case 2:
        return "RC4 128 bits";
    case 3:
        return "AES 128 bits";
    case 4:
        return "AES 256 bits";
    default:
        return "another handler";
    }
}

std::vector<std::string> permittedOperations(Library& library)
{
    std::vector<std::string> permitted;
    const bool everything = library.IsEncrypted() != 1;
    for (std::size_t i = 0; i < permissionNames.size(); ++i) {
        if (everything || library.HasPermission(static_cast<int>(i) + 1) == 1) {
            permitted.emplace_back(permissionNames[i]);
        }
    }
    return permitted;
}

// By the library's paper format codes, from 1.
std::string paperName(int format)
{
    const bool isKnown = format >= 1 && format <= static_cast<int>(paperFormats.size());
    return isKnown ? paperFormats[static_cast<std::size_t>(format) - 1].name : "";
}

// A page's size in hundredths of a point, as a viewer shows it.
std::pair<long, long> shownSize(Library& library, int page)
{
    constexpr int cropBox = 2;
    constexpr int widthOfBox = 5;
    constexpr int heightOfBox = 6;
    const long width = std::lround(library.GetPageBoxAt(page, cropBox, widthOfBox) * 100);
    const long height = std::lround(library.GetPageBoxAt(page, cropBox, heightOfBox) * 100);
    const bool lying = library.GetPageRotationAt(page) % 180 != 0;
    return lying ? std::make_pair(height, width) : std::make_pair(width, height);
}

std::vector<PageSize> pageSizesOf(Library& library, int pages)
{
    std::vector<PageSize> sizes;
    std::map<std::pair<long, long>, std::size_t> known;
    for (int page = 1; page <= pages; ++page) {
        const auto size = shownSize(library, page);
        if (size.first == 0 && size.second == 0) {
            continue; // the library could not tell
        }
        const auto [entry, isNew] = known.emplace(size, sizes.size());
        if (isNew) {
            sizes.push_back({static_cast<double>(size.first) / 100,
                             static_cast<double>(size.second) / 100, page, 0,
                             paperName(library.FindPageFormat(page))});
        }
        ++sizes[entry->second].pages;
    }
    return sizes;
}

// Texts of documents can have any length; no more of them is shown, or kept.
std::string shortened(const std::wstring& text)
{
    constexpr std::size_t longest = 300;
    return text.size() <= longest ? karvel::text::fromWide(text)
                                  : karvel::text::fromWide(text.substr(0, longest)) + "...";
}

int atMost(const std::optional<int>& count)
{
    return std::min(count.value_or(0), static_cast<int>(mostListed));
}

std::vector<SignatureInfo> signaturesOf(Library& library, const std::optional<int>& count)
{
    constexpr int signer = 1;
    constexpr int date = 5;
    constexpr int unknown = 0;
    constexpr int wholeFile = 1;
    std::vector<SignatureInfo> signatures;
    for (int number = 1; number <= atMost(count); ++number) {
        SignatureInfo signature;
        signature.field = shortened(library.GetFieldName(library.GetSignatureField(number)));
        signature.isSigned = library.IsSignatureSigned(number) == 1;
        if (signature.isSigned) {
            signature.signer = shortened(library.GetSignatureText(number, signer));
            signature.time = shortened(library.GetSignatureText(number, date));
            const int coverage = library.GetSignatureCoverage(number);
            if (coverage != unknown) {
                signature.coversAll = coverage == wholeFile;
            }
        }
        signatures.push_back(std::move(signature));
    }
    return signatures;
}

DocumentLists listsOf(Library& library, const DocumentInfo& info)
{
    DocumentLists lists;
    for (int number = 1; number <= atMost(info.attachments); ++number) {
        lists.attachments.push_back(shortened(library.GetAttachmentName(number)));
    }
    for (int number = 1; number <= atMost(info.layers); ++number) {
        lists.layers.push_back(shortened(library.GetLayerName(number)));
    }
    for (const OutlineEntry& entry : outlineEntries(library, mostListed)) {
        lists.outline.push_back({entry.level, shortened(entry.title)});
    }
    return lists;
}

} // namespace

Result<DocumentInfo> inspect(Library& library, const std::string& input,
                             const std::string& standardInput,
                             const std::vector<std::string>& passwords, bool withLists)
{
    const auto document =
        OpenDocument::open(library, input, standardInput, passwords, Access::Read);
    if (!document) {
        return tl::unexpected<Error>(document.error());
    }
    DocumentInfo info;
    info.input = input;
    std::error_code failed;
    info.bytes =
        input == standardStream ? standardInput.size() : std::filesystem::file_size(input, failed);
    info.pages = library.PageCount();
    info.pageSizes = pageSizesOf(library, info.pages);
    info.version = karvel::text::fromWide(library.PdfVersion());
    info.encryption = encryptionText(library);
    info.permitted = permittedOperations(library);
    library.ClearLastError();
    constexpr int titleEntry = 1;
    const std::string title = karvel::text::fromWide(library.GetDocumentInformation(titleEntry));
    if (lastLibraryCode(library) == LibraryCode::None) {
        info.title = title;
    }
    info.outlineEntries = answer(library, &Library::OutlineEntryCount);
    info.fields = answer(library, &Library::FieldCount);
    info.tagged = yesOrNo(library, &Library::IsTagged);
    info.signatures = answer(library, &Library::SignatureCount);
    info.attachments = answer(library, &Library::AttachmentCount);
    info.layers = answer(library, &Library::LayerCount);
    info.linearised = yesOrNo(library, &Library::IsLinearized);
    info.signatureFields = signaturesOf(library, info.signatures);
    if (withLists) {
        info.lists = listsOf(library, info);
    }
    info.repairs = document->repairs();
    return info;
}

} // namespace vantora
