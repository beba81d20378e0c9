#include "KarvelPDFLibrary/content/PageContent.h"

#include "KarvelPDFLibrary/content/ContentStreams.h"
#include "KarvelPDFLibrary/index/BoundedData.h"

#include <qpdf/BufferInputSource.hh>
#include <qpdf/QPDFTokenizer.hh>

namespace karvel::content {

namespace {

/// What all streams of a page may come to when they are decoded.
constexpr std::size_t mostOfPage = 256U * 1024 * 1024;

/// Goes through content and counts what has to be closed again.
class Nesting {
public:
    /// False when the word closes what is not open.
    bool add(const std::string& word)
    {
        for (Pair& pair : pairs_) {
            pair.open += word == pair.begin ? 1 : word == pair.end ? -1 : 0;
            if (pair.open < 0) {
                return false;
            }
        }
        return true;
    }

    bool isClosed() const
    {
        for (const Pair& pair : pairs_) {
            if (pair.open != 0) {
                return false;
            }
        }
        return true;
    }

private:
    struct Pair {
        std::string begin;
        std::string end;
        int open = 0;
    };
    Pair pairs_[4] = {{"q", "Q"}, {"BT", "ET"}, {"[", "]"}, {"<<", ">>"}};
};

Outcome parses(const std::string& content)
{
    const auto input = std::make_shared<BufferInputSource>("content", content);
    QPDFTokenizer tokenizer;
    tokenizer.allowEOF();
    Nesting nesting;
    for (;;) {
        const QPDFTokenizer::Token token = tokenizer.readToken(input, "content", true);
        const auto type = token.getType();
        if (type == QPDFTokenizer::tt_eof) {
            break;
        }
        const bool isText = type == QPDFTokenizer::tt_string || type == QPDFTokenizer::tt_name;
        if (type == QPDFTokenizer::tt_bad || (!isText && !nesting.add(token.getRawValue()))) {
            return fail(ErrorCode::BadSyntax, "the content cannot be read at byte " +
                                                  std::to_string(input->getLastOffset()));
        }
        if (token.isWord("ID")) {
            tokenizer.expectInlineImage(input);
        }
    }
    if (!nesting.isClosed()) {
        return fail(ErrorCode::BadSyntax,
                    "the content ends inside of a text, a state or an object that it began");
    }
    return {};
}

} // namespace

Result<std::string> pageContent(Document& document, int page)
{
    std::string content;
    try {
        bool isFirst = true;
        for (const QPDFObjectHandle& stream : contentStreams(document.page(page))) {
            if (QPDFObjectHandle(stream).isStream()) {
                content += isFirst ? "" : "\n";
                content += index::boundedData(stream, mostOfPage - content.size());
                isFirst = false;
            }
        }
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
    return content;
}

Outcome addPageContent(Document& document, int page, const std::string& content, Position position)
{
    if (Outcome status = parses(content); !status) {
        return status;
    }
    if (Outcome status = ownStreams(document, page); !status) {
        return status;
    }
    try {
        const auto stream = [&](const std::string& data) {
            return document.changes().add(document.file().newStream(data));
        };
        std::vector<QPDFObjectHandle> streams = contentStreams(document.page(page));
        const std::string shielded = "q\n" + content + "\nQ\n";
        if (position == Position::Under) {
            streams.insert(streams.begin(), stream(shielded));
        } else {
            streams.insert(streams.begin(), stream("q\n"));
            streams.push_back(stream("\nQ\n" + shielded));
        }
        document.editPage(page).replaceKey("/Contents", QPDFObjectHandle::newArray(streams));
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
    return {};
}

} // namespace karvel::content
