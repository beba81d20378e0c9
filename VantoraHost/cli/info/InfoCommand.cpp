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

std::string sizeLine(const PageSize& size, const Language& language)
{
    std::string line = language.figures(points(size.width)) + " x " +
                       language.figures(points(size.height)) + " pt";
    if (!size.paper.empty()) {
        line += size.width > size.height ? language.text(" (%1 landscape)", {size.paper})
                                         : " (" + size.paper + ")";
    }
    return line + ", " + language.counted(static_cast<std::uint64_t>(size.pages), "page", "pages");
}

/// Writes "label   value" lines.
class InfoLines {
public:
    InfoLines(std::ostream& out, const Language& language) : out_(out), language_(language) {}

    /// Nothing of it is translated here.
    void line(const std::string& label, const std::string& value)
    {
        // Words of other languages are longer.
        out_ << "  " << padded(label, language_.isEnglish() ? 14 : 18) << value << '\n';
    }

    void count(const std::string& label, const std::optional<int>& number, const char* one,
               const char* several)
    {
        line(label, !number ? language_.text("unknown")
                    : *number == 0
                        ? language_.text("none")
                        : language_.counted(static_cast<std::uint64_t>(*number), one, several));
    }

    /// What stands below a count; more than are listed may be there.
    void list(const std::vector<std::string>& texts, const std::optional<int>& count)
    {
        for (const std::string& text : texts) {
            line("", shown(text));
        }
        const auto all = static_cast<std::size_t>(std::max(0, count.value_or(0)));
        if (all > texts.size()) {
            line("", language_.text("and %1 more", {language_.number(all - texts.size())}));
        }
    }

    void yesOrNo(const std::string& label, const std::optional<bool>& value)
    {
        line(label, !value   ? language_.text("unknown")
                    : *value ? language_.text("yes")
                             : language_.text("no"));
    }

private:
    std::ostream& out_;
    const Language& language_;
};

std::string notPermitted(const DocumentInfo& info, const Language& language)
{
    std::string missing;
    for (const char* name : permissionNames) {
        if (std::find(info.permitted.begin(), info.permitted.end(), name) == info.permitted.end()) {
            missing += (missing.empty() ? "" : ", ") + language.sentence(name);
        }
    }
    return missing;
}

// No claim that a signature is valid, or by whom it says that it is.
std::string signatureLine(const SignatureInfo& signature, const Language& language)
{
    std::string line = "\"" + shown(signature.field) + "\": ";
    if (!signature.isSigned) {
        return line + language.text("not signed");
    }
    line += language.text("signed, not checked") + "; ";
    line += signature.signer.empty() ? language.text("names no signer")
                                     : language.text("by %1", {shown(signature.signer)});
    line += signature.time.empty() ? "" : ", " + shown(signature.time);
    return line + "; " +
           (!signature.coversAll   ? language.text("what it covers can't be told")
            : *signature.coversAll ? language.text("covers the whole file")
                                   : language.text("does not cover the whole file"));
}

void printPageSizes(const DocumentInfo& info, InfoLines& lines, const Language& language)
{
    const std::string label = language.text("page size");
    if (info.pageSizes.empty()) {
        lines.line(label, language.text("unknown"));
    }
    for (std::size_t i = 0; i < info.pageSizes.size() && i < sizesShown; ++i) {
        lines.line(i == 0 ? label : "", sizeLine(info.pageSizes[i], language));
    }
    if (info.pageSizes.size() > sizesShown) {
        lines.line("", language.text("and %1 more, which --json lists",
                                     {language.counted(info.pageSizes.size() - sizesShown, "size",
                                                       "sizes")}));
    }
}

void printText(const DocumentInfo& info, const Streams& streams)
{
    const Language& language = streams.language;
    streams.out << shown(info.input) << '\n';
    InfoLines lines(streams.out, language);
    lines.line(language.text("title"), !info.title           ? language.text("unknown")
                                       : info.title->empty() ? language.text("none")
                                                             : shown(*info.title));
    lines.line(language.text("pages"), language.number(static_cast<std::uint64_t>(info.pages)));
    printPageSizes(info, lines, language);
    lines.line(language.text("file size"), language.size(info.bytes));
    lines.line(language.text("PDF version"),
               info.version.empty() ? language.text("unknown") : shown(info.version));
    lines.line(language.text("encryption"), language.sentence(info.encryption.value_or("unknown")));
    if (const std::string missing = notPermitted(info, language); !missing.empty()) {
        lines.line(language.text("not permitted"), missing);
    }
    lines.count(language.text("outline"), info.outlineEntries, "entry", "entries");
    if (info.lists) {
        std::vector<std::string> titles;
        for (const OutlineLine& line : info.lists->outline) {
            titles.push_back(std::string(2 * (static_cast<std::size_t>(line.level) - 1), ' ') +
                             line.title);
        }
        lines.list(titles, info.outlineEntries);
    }
    lines.count(language.text("form"), info.fields, "field", "fields");
    lines.count(language.text("signatures"), info.signatures, "field", "fields");
    for (const SignatureInfo& signature : info.signatureFields) {
        lines.line("", signatureLine(signature, language));
    }
    lines.count(language.text("attachments"), info.attachments, "file", "files");
    if (info.lists) {
        lines.list(info.lists->attachments, info.attachments);
    }
    lines.count(language.text("layers"), info.layers, "layer", "layers");
    if (info.lists) {
        lines.list(info.lists->layers, info.layers);
    }
    lines.yesOrNo(language.text("tagged"), info.tagged);
    lines.yesOrNo(language.text("linearised"), info.linearised);
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
            printText(*info, streams_);
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
