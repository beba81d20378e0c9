#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <utility>

namespace karvel::index {

namespace {

int hexDigit(char ch)
{
    if (ch >= '0' && ch <= '9') {
        return ch - '0';
    }
    if (ch >= 'a' && ch <= 'f') {
        return ch - 'a' + 10;
    }
    return ch >= 'A' && ch <= 'F' ? ch - 'A' + 10 : -1;
}

/// Deeper nesting is left to readers that guard against it.
constexpr std::size_t deepestNesting = 200;

} // namespace

std::size_t skipSpace(std::string_view text, std::size_t at)
{
    while (at < text.size()) {
        if (isWhiteSpace(text[at])) {
            ++at;
        } else if (text[at] == '%') {
            while (at < text.size() && text[at] != '\n' && text[at] != '\r') {
                ++at;
            }
        } else {
            break;
        }
    }
    return at;
}

bool readUnsigned(std::string_view text, std::size_t& at, std::uint64_t& value)
{
    const std::size_t start = at;
    value = 0;
    while (at < text.size() && isDigit(text[at]) && at - start < 11) {
        value = value * 10 + static_cast<std::uint64_t>(text[at] - '0');
        ++at;
    }
    return at > start && at - start < 11;
}

std::optional<std::uint64_t> unsignedIn(std::string_view text)
{
    std::size_t at = 0;
    std::uint64_t number = 0;
    const bool isNumber = readUnsigned(text, at, number) && at == text.size();
    return isNumber ? std::optional(number) : std::nullopt;
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(skipSpace(text, 0), text.size()));
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::optional<Reference> readReference(std::string_view text)
{
    std::size_t at = skipSpace(text, 0);
    std::uint64_t object = 0;
    std::uint64_t generation = 0;
    if (!readUnsigned(text, at, object)) {
        return std::nullopt;
    }
    at = skipSpace(text, at);
    if (!readUnsigned(text, at, generation)) {
        return std::nullopt;
    }
    at = skipSpace(text, at);
    const bool ends = at + 1 >= text.size() || !isRegular(text[at + 1]);
    if (at >= text.size() || text[at] != 'R' || !ends || object > 0xFFFFFFFFU ||
        generation > 0xFFFFU) {
        return std::nullopt;
    }
    return Reference{static_cast<std::uint32_t>(object), static_cast<std::uint32_t>(generation)};
}

std::vector<Reference> referencesIn(const std::string& text)
{
    class Collector final : public ScanSink {
    public:
        void reference(std::uint32_t object, std::uint32_t generation) override
        {
            found.push_back({object, generation});
        }
        void beforeEntry(std::string_view) override {}
        void afterEntry(std::string_view, std::string_view) override {}
        std::vector<Reference> found;
    };
    Collector collector;
    const std::string ended = text + " endobj ";
    ValueScanner(ended, collector).scan(0);
    return std::move(collector.found);
}

bool mayHoldStrings(std::string_view text)
{
    for (std::size_t i = 0; (i = text.find_first_of("(<", i)) != std::string_view::npos; i += 2) {
        if (text[i] == '(' || i + 1 == text.size() || text[i + 1] != '<') {
            return true;
        }
    }
    return false;
}

std::string decodedName(std::string_view name)
{
    std::string decoded;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '#' && i + 2 < name.size() && hexDigit(name[i + 1]) >= 0 &&
            hexDigit(name[i + 2]) >= 0) {
            decoded += static_cast<char>(hexDigit(name[i + 1]) * 16 + hexDigit(name[i + 2]));
            i += 2;
        } else {
            decoded += name[i];
        }
    }
    return decoded;
}

namespace {

std::string decodedHexString(std::string_view digits)
{
    std::string bytes;
    int high = -1;
    for (const char ch : digits) {
        const int digit = hexDigit(ch);
        if (digit < 0) {
            continue;
        }
        if (high < 0) {
            high = digit;
        } else {
            bytes += static_cast<char>(high * 16 + digit);
            high = -1;
        }
    }
    if (high >= 0) {
        bytes += static_cast<char>(high * 16);
    }
    return bytes;
}

/// What follows a backslash (ISO 32000-2, table 3); `at` is moved to its last character.
void appendEscaped(std::string& bytes, std::string_view text, std::size_t& at)
{
    static constexpr std::string_view letters = "nrtbf";
    static constexpr std::string_view meanings = "\n\r\t\b\f";
    const char ch = text[at];
    if (const std::size_t letter = letters.find(ch); letter != std::string_view::npos) {
        bytes += meanings[letter];
    } else if (ch >= '0' && ch <= '7') {
        int value = 0;
        std::size_t end = at;
        for (; end < text.size() && end < at + 3 && text[end] >= '0' && text[end] <= '7'; ++end) {
            value = value * 8 + (text[end] - '0');
        }
        bytes += static_cast<char>(value);
        at = end - 1;
    } else if (ch == '\r' && at + 1 < text.size() && text[at + 1] == '\n') {
        ++at; // a line continued
    } else if (ch != '\r' && ch != '\n') {
        bytes += ch;
    }
}

} // namespace

std::string decodedString(std::string_view written)
{
    if (written.size() < 2 || written.front() == '/') {
        return written.find('#') == std::string_view::npos ? std::string(written)
                                                           : decodedName(written);
    }
    const std::string_view text = written.substr(1, written.size() - 2);
    if (written.front() == '<') {
        return decodedHexString(text);
    }
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && at + 1 < text.size()) {
            appendEscaped(bytes, text, ++at);
        } else if (text[at] == '\r') {
            // An end of line counts as one line feed, however it is written.
            bytes += '\n';
            at += at + 1 < text.size() && text[at + 1] == '\n' ? 1 : 0;
        } else {
            bytes += text[at];
        }
    }
    return bytes;
}

ScanResult ValueScanner::scan(std::size_t start)
{
    at_ = start;
    open_.clear();
    first_ = 0;
    expectsKey_ = false;
    if (doubts_ != nullptr) {
        doubts_->begin();
    }
    return run();
}

ValueScanner::Token ValueScanner::next()
{
    while (at_ < text_.size() && isWhiteSpace(text_[at_])) {
        ++at_;
    }
    if (at_ < text_.size() && text_[at_] == '%') {
        at_ = skipSpace(text_, at_);
    }
    tokenStart_ = at_;
    if (at_ >= text_.size()) {
        return Token::End;
    }
    const char ch = text_[at_];
    const bool doubled = at_ + 1 < text_.size() && text_[at_ + 1] == ch;
    switch (ch) {
    case '/':
        return readName();
    case '(':
        return readLiteralString();
    case '<':
        if (at_ + 1 >= text_.size()) {
            return Token::End;
        }
        if (!doubled) {
            return readHexString();
        }
        at_ += 2;
        return Token::DictionaryBegin;
    case '>':
        if (at_ + 1 >= text_.size()) {
            return Token::End;
        }
        at_ += 2;
        return doubled ? Token::DictionaryEnd : Token::Bad;
    case '[':
        ++at_;
        return Token::ArrayBegin;
    case ']':
        ++at_;
        return Token::ArrayEnd;
    case ')':
    case '{':
    case '}':
        return Token::Bad;
    default:
        return readNumberOrKeyword();
    }
}

ValueScanner::Token ValueScanner::readName()
{
    ++at_;
    hasEscapes_ = false;
    while (at_ < text_.size() && isRegular(text_[at_])) {
        hasEscapes_ = hasEscapes_ || text_[at_] == '#';
        ++at_;
    }
    return at_ < text_.size() ? Token::Name : Token::End;
}

ValueScanner::Token ValueScanner::readLiteralString()
{
    int depth = 0;
    for (; at_ < text_.size(); ++at_) {
        switch (text_[at_]) {
        case '\\':
            ++at_;
            break;
        case '(':
            ++depth;
            break;
        case ')':
            if (--depth == 0) {
                ++at_;
                return Token::String;
            }
            break;
        default:
            break;
        }
    }
    return Token::End;
}

ValueScanner::Token ValueScanner::readHexString()
{
    for (++at_; at_ < text_.size(); ++at_) {
        if (text_[at_] == '>') {
            ++at_;
            return Token::String;
        }
        if (hexDigit(text_[at_]) < 0 && !isWhiteSpace(text_[at_])) {
            return Token::Bad;
        }
    }
    return Token::End;
}

ValueScanner::Token ValueScanner::readNumberOrKeyword()
{
    bool number = true;
    while (at_ < text_.size() && isRegular(text_[at_])) {
        const char ch = text_[at_];
        number = number && (isDigit(ch) || ch == '.' || ch == '-' || ch == '+');
        ++at_;
    }
    if (at_ >= text_.size()) {
        return Token::End;
    }
    if (number) {
        return Token::Number;
    }
    const std::string_view word = text_.substr(tokenStart_, at_ - tokenStart_);
    return word == "true" || word == "false" || word == "null" ? Token::Keyword : Token::Bad;
}

/// After a number: passes the rest when it is the first of "number number R". False when the text
/// ends before that can be told.
bool ValueScanner::passReference()
{
    std::size_t at = tokenStart_;
    std::uint64_t object = 0;
    std::uint64_t generation = 0;
    if (!readUnsigned(text_, at, object) || at != at_) {
        return true;
    }
    at = skipSpace(text_, at);
    const bool second = readUnsigned(text_, at, generation);
    at = skipSpace(text_, at);
    if (at + 1 >= text_.size()) {
        return false;
    }
    const bool isReference = second && text_[at] == 'R' && !isRegular(text_[at + 1]);
    if (isReference && object <= 0xFFFFFFFFU && generation <= 0xFFFFU) {
        at_ = at + 1;
        sink_.reference(static_cast<std::uint32_t>(object), static_cast<std::uint32_t>(generation));
    }
    return true;
}

/// The same, with what is noted of a number.
bool ValueScanner::passNumber()
{
    const std::size_t end = at_;
    if (!passReference()) {
        return false;
    }
    const bool isReference = at_ != end;
    noteArrayStart(Token::Number, isReference);
    if (doubts_ != nullptr && isReference) {
        doubts_->reference(text_.substr(tokenStart_, end - tokenStart_));
    } else if (doubts_ != nullptr) {
        doubts_->number(text_.substr(tokenStart_, at_ - tokenStart_));
    }
    return true;
}

bool ValueScanner::push(char kind)
{
    if (open_.size() >= deepestNesting) {
        return false;
    }
    open_ += kind;
    if (doubts_ != nullptr) {
        doubts_->opened(kind == '<');
    }
    return true;
}

void ValueScanner::pop()
{
    open_.pop_back();
    if (doubts_ != nullptr) {
        doubts_->closed();
    }
}

void ValueScanner::noteName(std::string_view name)
{
    sink_.name(name);
    if (doubts_ != nullptr) {
        doubts_->name(name);
    }
}

void ValueScanner::noteDestination(Token token)
{
    if (token != Token::Name && !afterDestinationKey_) {
        return;
    }
    const std::string_view text = text_.substr(tokenStart_, at_ - tokenStart_);
    if (afterDestinationKey_ && (token == Token::Name || token == Token::String)) {
        sink_.destinationName(text);
    }
    afterDestinationKey_ =
        !afterDestinationKey_ && token == Token::Name && (text == "/Dest" || text == "/D");
}

void ValueScanner::noteArrayStart(Token token, bool isReference)
{
    const ArrayStart before = arrayStart_;
    arrayStart_ = ArrayStart::Elsewhere;
    if (token == Token::ArrayBegin) {
        arrayStart_ = ArrayStart::Opened;
    } else if (token == Token::Number && before == ArrayStart::Opened && !isReference) {
        arrayStart_ = ArrayStart::AfterNumber;
    } else if (token == Token::Name && before == ArrayStart::AfterNumber) {
        const std::string_view name = text_.substr(tokenStart_ + 1, at_ - tokenStart_ - 1);
        if (name == "XYZ" || name.substr(0, 3) == "Fit") {
            sink_.numberedDestination();
        }
    }
}

void ValueScanner::entryValueStarts()
{
    const std::string_view name = text_.substr(tokenStart_ + 1, at_ - tokenStart_ - 1);
    if (hasEscapes_) {
        key_ = decodedName(name);
    } else {
        key_.assign(name);
    }
    expectsKey_ = false;
    valueStart_ = at_;
    sink_.beforeEntry(key_);
}

void ValueScanner::entryValueEnds()
{
    if (isInOutermost()) {
        expectsKey_ = true;
        sink_.afterEntry(key_, text_.substr(valueStart_, at_ - valueStart_));
    }
}

ScanResult ValueScanner::run()
{
    for (bool isFirst = true;; isFirst = false) {
        const Token token = next();
        if (token == Token::End) {
            return ScanResult::NeedsMore;
        }
        if (isFirst) {
            first_ = token == Token::String ? '(' : text_[tokenStart_];
        }
        if (expectsKey_ && isInOutermost() && token != Token::Name &&
            token != Token::DictionaryEnd) {
            return ScanResult::Malformed;
        }
        if (token != Token::Number) {
            noteArrayStart(token, false);
        }
        noteDestination(token);
        switch (token) {
        case Token::DictionaryBegin:
        case Token::ArrayBegin:
            if (!push(token == Token::ArrayBegin ? '[' : '<')) {
                return ScanResult::Malformed;
            }
            expectsKey_ = expectsKey_ || (isFirst && token == Token::DictionaryBegin);
            continue;
        case Token::DictionaryEnd:
        case Token::ArrayEnd:
            if (open_.empty() || open_.back() != (token == Token::ArrayEnd ? '[' : '<') ||
                (isInOutermost() && !expectsKey_)) {
                return ScanResult::Malformed;
            }
            pop();
            break;
        case Token::Name:
            noteName(text_.substr(tokenStart_ + 1, at_ - tokenStart_ - 1));
            if (expectsKey_ && isInOutermost()) {
                entryValueStarts();
                continue;
            }
            break;
        case Token::Number:
            if (!passNumber()) {
                return ScanResult::NeedsMore;
            }
            break;
        case Token::String:
        case Token::Keyword:
            if (doubts_ != nullptr) {
                doubts_->other();
            }
            break;
        default:
            return ScanResult::Malformed;
        }
        if (open_.empty()) {
            return ScanResult::Complete;
        }
        entryValueEnds();
    }
}

} // namespace karvel::index
