#include "VantoraHost/cli/info/InfoCommand.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/documents/DocumentInfo.h"
#include "VantoraHost/core/documents/InfoJson.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/workers/ConfinedCall.h"
#include "VantoraHost/core/workers/Confinement.h"

#include <algorithm>
#include <functional>
#include <ostream>

namespace vantora::cli {

namespace {

constexpr std::size_t sizesShown = 8;

// 595.28, 612, 841.9: no more decimals than needed.
std::string points(double length)
{
    const auto hundredths = static_cast<long>(length * 100 + 0.5);
    std::string text = std::to_string(hundredths / 100);
    if (const long rest = hundredths % 100; rest != 0) {
        text += rest % 10 == 0 ? "." + std::to_string(rest / 10)
                               : (rest < 10 ? ".0" : ".") + std::to_string(rest);
    }
    return text;
}

std::string sizeLine(const PageSize& size)
{
    std::string line = points(size.width) + " x " + points(size.height) + " pt";
    if (!size.paper.empty()) {
        line += " (" + size.paper + (size.width > size.height ? " landscape)" : ")");
    }
    return line + ", " + counted(static_cast<std::uint64_t>(size.pages), "page", "pages");
}

/// Writes "label   value" lines.
class Sheet {
public:
    explicit Sheet(std::ostream& out) : out(out) {}

    void line(const std::string& label, const std::string& value)
    {
        std::string padded = label;
        padded.resize(14, ' ');
        out << "  " << padded << value << '\n';
    }

    void count(const char* label, const std::optional<int>& number, const char* one,
               const char* several)
    {
        line(label, !number        ? "unknown"
                    : *number == 0 ? "none"
                                   : counted(static_cast<std::uint64_t>(*number), one, several));
    }

    void yesOrNo(const char* label, const std::optional<bool>& value)
    {
        line(label, !value ? "unknown" : *value ? "yes" : "no");
    }

private:
    std::ostream& out;
};

std::string notPermitted(const DocumentInfo& info)
{
    std::string missing;
    for (const char* name : permissionNames) {
        if (std::find(info.permitted.begin(), info.permitted.end(), name) == info.permitted.end()) {
            missing += (missing.empty() ? "" : ", ") + std::string(name);
        }
    }
    return missing;
}

void printText(const DocumentInfo& info, std::ostream& out)
{
    out << shown(info.input) << '\n';
    Sheet sheet(out);
    sheet.line("title", !info.title           ? "unknown"
                        : info.title->empty() ? "none"
                                              : shown(*info.title));
    sheet.line("pages", grouped(static_cast<std::uint64_t>(info.pages)));
    if (info.pageSizes.empty()) {
        sheet.line("page size", "unknown");
    }
    for (std::size_t i = 0; i < info.pageSizes.size() && i < sizesShown; ++i) {
        sheet.line(i == 0 ? "page size" : "", sizeLine(info.pageSizes[i]));
    }
    if (info.pageSizes.size() > sizesShown) {
        sheet.line("", "and " + counted(info.pageSizes.size() - sizesShown, "size", "sizes") +
                           " more, which --json lists");
    }
    sheet.line("file size", sizeText(info.bytes));
    sheet.line("PDF version", info.version.empty() ? "unknown" : shown(info.version));
    sheet.line("encryption", info.encryption.value_or("unknown"));
    if (const std::string missing = notPermitted(info); !missing.empty()) {
        sheet.line("not permitted", missing);
    }
    sheet.count("outline", info.outlineEntries, "entry", "entries");
    sheet.count("form", info.fields, "field", "fields");
    sheet.count("signatures", info.signatures, "field", "fields");
    sheet.count("attachments", info.attachments, "file", "files");
    sheet.count("layers", info.layers, "layer", "layers");
    sheet.yesOrNo("tagged", info.tagged);
    sheet.yesOrNo("linearised", info.linearised);
}

// Each in a process of its own, which can come to no more harm than the document.
Result<DocumentInfo> inspectConfined(const std::string& input, const std::vector<std::string>& own,
                                     const Streams& streams,
                                     const std::function<Result<DocumentInfo>()>& look)
{
    CallLimits limits;
    limits.files.readable = own;
    limits.files.readable.push_back(input);
    limits.memory = memoryShare(1);
    limits.time = std::chrono::seconds(longestForADocument);
    const Result<std::string> answer = callConfined(limits, streams.interrupted, [&] {
        const Result<DocumentInfo> info = look();
        return info ? toJson(*info) : failureJson(info.error(), input);
    });
    Result<DocumentInfo> info =
        answer ? documentInfoOf(*answer) : tl::unexpected<Error>(answer.error());
    if (!info) {
        info.error().file = input;
    }
    return info;
}

} // namespace

int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams)
{
    const auto passwords = readPasswords(options.passwordFile);
    const auto library = loadPdfLibrary(installation.library);
    if (!passwords || !library) {
        printError(streams, !passwords ? passwords.error() : library.error());
        return SomeFailed;
    }
    const std::vector<std::string> own = programFiles({installation.library.parent_path()});
    bool allDone = true;
    for (const std::string& input : options.inputs) {
        if (streams.interrupted()) {
            return InterruptedByUser;
        }
        auto standardInput =
            input == standardStream ? readStandardInput(streams) : Result<std::string>("");
        const Result<DocumentInfo> info =
            standardInput
                ? inspectConfined(
                      input, own, streams,
                      [&] { return inspect(**library, input, *standardInput, *passwords); })
                : tl::unexpected<Error>(standardInput.error());
        if (!info && info.error().reason == Reason::Interrupted) {
            return InterruptedByUser;
        }
        if (options.json) {
            streams.out << (info ? toJson(*info) : failureJson(info.error(), input)) << '\n';
        } else if (info) {
            printText(*info, streams.out);
        }
        if (!info) {
            allDone = false;
            printError(streams, info.error());
        } else {
            printRepairs(streams, input, info->repairs);
        }
    }
    return allDone ? AllDone : SomeFailed;
}

} // namespace vantora::cli
