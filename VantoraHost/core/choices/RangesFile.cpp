#include "VantoraHost/core/choices/RangesFile.h"

#include "VantoraHost/core/PageRangeFault.h"

#include <QtCore/QString>

#include <algorithm>
#include <climits>
#include <unordered_map>

namespace vantora {

namespace {

using Fields = std::vector<std::string>;

constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";

tl::unexpected<std::string> wrong(std::size_t line, const std::string& what)
{
    return tl::unexpected<std::string>("line " + std::to_string(line) + " " + what);
}

/// Goes over the lines of a text, which quotes may join.
class Lines {
public:
    explicit Lines(std::string_view text) : text_(text)
    {
        if (text_.substr(0, byteOrderMark.size()) == byteOrderMark) {
            at_ = byteOrderMark.size();
        }
        separator_ = separatorOfFirst();
    }

    /// Steps over empty lines; whether one is left.
    bool hasMore()
    {
        while (at_ < text_.size() && isLineEnd()) {
            skipLineEnd();
        }
        return at_ < text_.size();
    }

    std::size_t number() const { return line_; }
    char separator() const { return separator_; }

    tl::expected<Fields, std::string> next()
    {
        const std::size_t line = line_;
        Fields fields;
        for (;;) {
            auto field = text_.substr(at_, 1) == "\"" ? quoted(line) : plain();
            if (!field) {
                return tl::unexpected<std::string>(std::move(field.error()));
            }
            fields.push_back(std::move(*field));
            if (at_ >= text_.size() || isLineEnd()) {
                skipLineEnd();
                return fields;
            }
            if (text_[at_] != separator_) {
                return wrong(line, "has text after a quote that closes; a quote within is doubled");
            }
            ++at_;
        }
    }

private:
    // The first line's tells that of all: a tab outside quotes, which open where a field begins.
    char separatorOfFirst() const
    {
        bool inQuotes = false;
        bool begins = true;
        for (std::size_t i = text_.find_first_not_of("\r\n", at_); i < text_.size(); ++i) {
            const char c = text_[i];
            if (inQuotes) {
                inQuotes = c != '"';
            } else if (c == '\t' || c == '\n') {
                return c == '\t' ? '\t' : ',';
            } else {
                inQuotes = begins && c == '"';
            }
            // A quote that closes may be the first half of one within.
            begins = c == ',' || (c == '"' && !inQuotes);
        }
        return ',';
    }

    bool isLineEnd() const
    {
        return text_[at_] == '\n' || text_.substr(at_, 2) == "\r\n" || text_.substr(at_) == "\r";
    }

    void skipLineEnd()
    {
        at_ = std::min(text_.size(), at_ + (text_.substr(at_, 1) == "\r" ? 2 : 1));
        ++line_;
    }

    tl::expected<std::string, std::string> plain()
    {
        const std::size_t start = at_;
        while (at_ < text_.size() && text_[at_] != separator_ && !isLineEnd()) {
            ++at_;
        }
        return std::string(text_.substr(start, at_ - start));
    }

    tl::expected<std::string, std::string> quoted(std::size_t line)
    {
        std::string field;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"' && text_.substr(at_ + 1, 1) != "\"") {
                ++at_;
                return field;
            }
            at_ += text_[at_] == '"' ? 1 : 0;
            line_ += text_[at_] == '\n' ? 1 : 0;
            field += text_[at_];
        }
        return wrong(line, "opens a quote that nothing closes");
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    char separator_ = ',';
};

bool isHeader(const Fields& fields)
{
    const auto isCalled = [&](const char* name) {
        return QString::fromStdString(fields[1]).trimmed().compare(name, Qt::CaseInsensitive) == 0;
    };
    return isCalled("range") || isCalled("ranges") || isCalled("pages");
}

tl::expected<std::string, std::string> rangeOf(const std::string& field, std::size_t line)
{
    constexpr int longestShown = 60;
    if (field.size() > longestDocumentRange) {
        return wrong(line, "has a range of more than " + std::to_string(longestDocumentRange) +
                               " characters");
    }
    const QString range = withoutLooseEnd(QString::fromStdString(field).trimmed());
    const auto fault = range.isEmpty() ? std::nullopt : pageRangeFault(range);
    if (fault) {
        return wrong(line,
                     "has the page range \"" +
                         shortened(QString::fromStdString(field), longestShown).toStdString() +
                         "\", which " + fault->toStdString());
    }
    return range.toStdString();
}

tl::expected<DocumentRange, std::string> documentRangeOf(Fields fields, std::size_t line,
                                                         char separator)
{
    if (fields.size() < 2) {
        return wrong(line, "has no range; a line is a path, a tab (or a comma) and a range");
    }
    if (fields.size() > 2) {
        return wrong(line, std::string("has more than a path and a range; what holds a ") +
                               (separator == ',' ? "comma" : "tab") +
                               " stands in quotes, such as \"1,4-6\"");
    }
    if (fields[0].empty()) {
        return wrong(line, "names no document");
    }
    if (fields[0].size() >= PATH_MAX || fields[0].find('\0') != std::string::npos) {
        return wrong(line, "names a document by what is no path");
    }
    auto range = rangeOf(fields[1], line);
    if (!range) {
        return tl::unexpected<std::string>(std::move(range.error()));
    }
    return DocumentRange{std::move(fields[0]), std::move(*range), line};
}

} // namespace

tl::expected<std::vector<DocumentRange>, std::string> documentRangesOf(std::string_view text)
{
    std::vector<DocumentRange> ranges;
    if (text.size() > longestRangesText) {
        return tl::unexpected<std::string>(
            "is larger than " + std::to_string(longestRangesText / 1024 / 1024) + " MiB");
    }
    std::unordered_map<std::string, std::size_t> lineOf;
    Lines lines(text);
    for (bool isFirst = true; lines.hasMore(); isFirst = false) {
        const std::size_t line = lines.number();
        auto fields = lines.next();
        if (!fields) {
            return tl::unexpected<std::string>(std::move(fields.error()));
        }
        if (isFirst && fields->size() == 2 && isHeader(*fields)) {
            continue;
        }
        auto one = documentRangeOf(std::move(*fields), line, lines.separator());
        if (!one) {
            return tl::unexpected<std::string>(std::move(one.error()));
        }
        const auto [first, isNew] = lineOf.try_emplace(one->path, line);
        if (!isNew) {
            return wrong(line, "names \"" + one->path + "\", as line " +
                                   std::to_string(first->second) + " does");
        }
        if (ranges.size() == mostDocumentRanges) {
            return wrong(line, "is one more than the " + std::to_string(mostDocumentRanges) +
                                   " documents that a list may name");
        }
        ranges.push_back(std::move(*one));
    }
    return ranges;
}

std::string rangesField(std::string_view path)
{
    const bool isPlain = path.find_first_of("\t\r\n\"") == std::string_view::npos &&
                         path.substr(0, byteOrderMark.size()) != byteOrderMark;
    if (isPlain) {
        return std::string(path);
    }
    std::string field = "\"";
    for (const char c : path) {
        field += c == '"' ? "\"\"" : std::string(1, c);
    }
    return field + '"';
}

std::string rangesLine(std::string_view path, std::string_view range)
{
    return rangesField(path) + '\t' + std::string(range) + '\n';
}

} // namespace vantora
