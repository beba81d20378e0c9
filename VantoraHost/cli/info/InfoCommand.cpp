#include "VantoraHost/cli/info/InfoCommand.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/documents/DocumentInfo.h"
#include "VantoraHost/core/documents/InfoJson.h"
#include "VantoraHost/core/reports/FailureJson.h"

#include <algorithm>
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
    explicit Sheet(std::ostream& out) : out_(out) {}

    void line(const std::string& label, const std::string& value)
    {
        std::string padded = label;
        padded.resize(14, ' ');
        out_ << "  " << padded << value << '\n';
    }

    void count(const char* label, const std::optional<int>& number, const char* one,
               const char* several)
    {
        line(label, !number        ? "unknown"
                    : *number == 0 ? "none"
                                   : counted(static_cast<std::uint64_t>(*number), one, several));
    }

    /// What stands below a count; more than are listed may be there.
    void list(const std::vector<std::string>& texts, const std::optional<int>& count)
    {
        for (const std::string& text : texts) {
            line("", shown(text));
        }
        const auto all = static_cast<std::size_t>(std::max(0, count.value_or(0)));
        if (all > texts.size()) {
            line("", "and " + grouped(all - texts.size()) + " more");
        }
    }

    void yesOrNo(const char* label, const std::optional<bool>& value)
    {
        line(label, !value ? "unknown" : *value ? "yes" : "no");
    }

private:
    std::ostream& out_;
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

// No claim that a signature is valid, or by whom it says that it is.
std::string signatureLine(const SignatureInfo& signature)
{
    std::string line = "\"" + shown(signature.field) + "\": ";
    if (!signature.isSigned) {
        return line + "not signed";
    }
    line += "signed, not checked; ";
    line += signature.signer.empty() ? "names no signer" : "by " + shown(signature.signer);
    line += signature.time.empty() ? "" : ", " + shown(signature.time);
    return line + (!signature.coversAll   ? "; what it covers can't be told"
                   : *signature.coversAll ? "; covers the whole file"
                                          : "; does not cover the whole file");
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
    if (info.lists) {
        std::vector<std::string> titles;
        for (const OutlineLine& line : info.lists->outline) {
            titles.push_back(std::string(2 * (static_cast<std::size_t>(line.level) - 1), ' ') +
                             line.title);
        }
        sheet.list(titles, info.outlineEntries);
    }
    sheet.count("form", info.fields, "field", "fields");
    sheet.count("signatures", info.signatures, "field", "fields");
    for (const SignatureInfo& signature : info.signatureFields) {
        sheet.line("", signatureLine(signature));
    }
    sheet.count("attachments", info.attachments, "file", "files");
    if (info.lists) {
        sheet.list(info.lists->attachments, info.attachments);
    }
    sheet.count("layers", info.layers, "layer", "layers");
    if (info.lists) {
        sheet.list(info.lists->layers, info.layers);
    }
    sheet.yesOrNo("tagged", info.tagged);
    sheet.yesOrNo("linearised", info.linearised);
}

/// Prints what documents are, in the order in which they are named.
class Inspection {
public:
    Inspection(const InfoOptions& options, const Looking& looking, const Streams& streams)
        : options_(options), looking_(looking), streams_(streams)
    {
    }

    /// Returns false when the person doesn't want to wait any longer.
    bool run()
    {
        return looking_.atEach([&](const std::string& input) { return json(input, look(input)); },
                               [&](const std::string& input, const Result<std::string>& found) {
                                   take(input, found ? documentInfoOf(*found)
                                                     : tl::unexpected<Error>(found.error()));
                               });
    }

    bool allDone() const { return done_; }

private:
    Result<DocumentInfo> look(const std::string& input)
    {
        return inspect(looking_.library(), input, looking_.standardInput(), looking_.passwords(),
                       options_.verbose);
    }

    static std::string json(const std::string& input, const Result<DocumentInfo>& info)
    {
        return info ? toJson(*info) : failureJson(info.error(), input);
    }

    void take(const std::string& input, Result<DocumentInfo> info)
    {
        if (!info) {
            info.error().file = input;
        }
        if (options_.json) {
            streams_.out << json(input, info) << '\n';
        } else if (info) {
            printText(*info, streams_.out);
        }
        streams_.out.flush();
        if (info) {
            printRepairs(streams_, input, info->repairs);
        } else {
            done_ = false;
            printError(streams_, info.error());
        }
    }

    const InfoOptions& options_;
    const Looking& looking_;
    const Streams& streams_;
    bool done_ = true;
};

} // namespace

int showInfo(const InfoOptions& options, const Installation& installation, const Streams& streams)
{
    const Result<Looking> looking = Looking::prepare(options, installation, streams);
    if (!looking) {
        return failedWith(streams, options.json, looking.error());
    }
    Inspection inspection(options, *looking, streams);
    const bool ended = inspection.run();
    return !ended ? InterruptedByUser : inspection.allDone() ? AllDone : SomeFailed;
}

} // namespace vantora::cli
