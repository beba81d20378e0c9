#include "VantoraHost/core/choices/Choice.h"

#include "VantoraHost/core/PageRangeFault.h"
#include "VantoraHost/core/PaperFormats.h"

#include <algorithm>
#include <array>

namespace vantora {

namespace {

using Checked = tl::expected<void, std::string>;

tl::unexpected<std::string> wrong(const std::string& sentence)
{
    return tl::unexpected<std::string>(sentence);
}

std::optional<int> positiveNumber(const QString& text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    const bool digitsOnly =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= '0' && c <= '9'; });
    return isNumber && digitsOnly && number > 0 ? std::optional<int>(number) : std::nullopt;
}

Checked readRange(Choice& choice)
{
    if (const auto fault = pageRangeFault(choice.argument)) {
        return wrong("needs a page range such as 1,4-6,9-15,21; this one " + fault->toStdString());
    }
    return {};
}

Checked readCount(Choice& choice)
{
    if (choice.argument.isNull()) {
        return {};
    }
    const auto count = positiveNumber(choice.argument);
    if (!count) {
        return wrong("needs a number of pages, from 1");
    }
    choice.count = *count;
    return {};
}

Checked readStep(Choice& choice)
{
    const QString offset = choice.argument.section('+', 1);
    const auto step = positiveNumber(choice.argument.section('+', 0, 0));
    const auto first = positiveNumber(offset);
    const bool plain = !choice.argument.contains('+');
    if (!step || (!plain && (!first || *first > *step))) {
        return wrong("needs a step such as 3 (pages 3, 6, 9) or 3+1 (pages 1, 4, 7)");
    }
    choice.count = *step;
    choice.offset = plain ? 0 : *first % *step;
    return {};
}

Checked readName(Choice& choice)
{
    choice.argument = choice.argument.simplified();
    if (choice.argument.isEmpty()) {
        return wrong("needs a name after the colon");
    }
    return {};
}

// WORDS, /REGEX/ or /REGEX/c; words are looked for so.
Checked readPattern(Choice& choice, QString (*patternOf)(const QString& words))
{
    const QString& text = choice.argument;
    const bool exact = text.endsWith("/c");
    const int closing = text.size() - (exact ? 2 : 1);
    const bool isPattern = text.startsWith('/') && closing > 0 && text.at(closing) == '/';
    const QString pattern = isPattern ? text.mid(1, closing - 1) : patternOf(text.simplified());
    if (pattern.isEmpty() || (!isPattern && text.simplified().isEmpty())) {
        return wrong("needs words, or a regular expression between slashes");
    }
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    if (!(isPattern && exact)) {
        options |= QRegularExpression::CaseInsensitiveOption;
    }
    choice.pattern = QRegularExpression(pattern, options);
    if (!choice.pattern.isValid()) {
        return wrong("is no regular expression: " + choice.pattern.errorString().toStdString() +
                     " at character " + std::to_string(choice.pattern.patternErrorOffset() + 1));
    }
    return {};
}

Checked readText(Choice& choice)
{
    return readPattern(choice,
                       [](const QString& words) { return QRegularExpression::escape(words); });
}

Checked readTitle(Choice& choice)
{
    return readPattern(choice, [](const QString& title) {
        return QRegularExpression::anchoredPattern(QRegularExpression::escape(title));
    });
}

constexpr double pointsPerMillimetre = 72 / 25.4;

Checked readSize(Choice& choice)
{
    for (const PaperFormat& format : paperFormats) {
        if (choice.argument.compare(QLatin1String(format.name), Qt::CaseInsensitive) == 0) {
            choice.size = {format.width * pointsPerMillimetre, format.height * pointsPerMillimetre};
            choice.eitherOrientation = true;
            return {};
        }
    }
    static const QRegularExpression measures(
        "^(\\d{1,5}(?:\\.\\d{1,3})?)x(\\d{1,5}(?:\\.\\d{1,3})?)(mm|pt)$");
    const auto match = measures.match(choice.argument);
    const double unit = match.captured(3) == "pt" ? 1 : pointsPerMillimetre;
    choice.size = {match.captured(1).toDouble() * unit, match.captured(2).toDouble() * unit};
    if (choice.size.width <= 0 || choice.size.height <= 0) {
        return wrong("needs a paper format such as A4 or Letter, or a size such as 210x297mm");
    }
    return {};
}

Checked readStrictness(Choice& choice)
{
    choice.isStrict = !choice.argument.isNull();
    if (choice.isStrict && choice.argument != QLatin1String("strict")) {
        return wrong("can only be blank or blank:strict");
    }
    return {};
}

enum class Argument { None, Optional, Needed };

struct KindRow {
    ChoiceKind kind;
    const char* name;
    Argument argument;
    const char* shown;
    Checked (*read)(Choice&);
};

Checked readNothing(Choice& /*choice*/)
{
    return {};
}

constexpr std::array<KindRow, 17> kinds = {{
    {ChoiceKind::Range, "range", Argument::Needed, "range:1,4-6", readRange},
    {ChoiceKind::First, "first", Argument::Optional, "first[:N]", readCount},
    {ChoiceKind::Last, "last", Argument::Optional, "last[:N]", readCount},
    {ChoiceKind::Odd, "odd", Argument::None, "odd", readNothing},
    {ChoiceKind::Even, "even", Argument::None, "even", readNothing},
    {ChoiceKind::Every, "every", Argument::Needed, "every:3[+1]", readStep},
    {ChoiceKind::Label, "label", Argument::Needed, "label:iv-x", readName},
    {ChoiceKind::Bookmark, "bookmark", Argument::Needed, "bookmark:TITLE", readTitle},
    {ChoiceKind::Size, "size", Argument::Needed, "size:A4", readSize},
    {ChoiceKind::Portrait, "portrait", Argument::None, "portrait", readNothing},
    {ChoiceKind::Landscape, "landscape", Argument::None, "landscape", readNothing},
    {ChoiceKind::Text, "text", Argument::Needed, "text:WORDS or text:/REGEX/", readText},
    {ChoiceKind::NoText, "no-text", Argument::None, "no-text", readNothing},
    {ChoiceKind::Blank, "blank", Argument::Optional, "blank[:strict]", readStrictness},
    {ChoiceKind::Colour, "colour", Argument::None, "colour", readNothing},
    {ChoiceKind::Grey, "grey", Argument::None, "grey", readNothing},
    {ChoiceKind::Duplicate, "duplicate", Argument::None, "duplicate", readNothing},
}};

} // namespace

const char* choiceName(ChoiceKind kind)
{
    return std::find_if(kinds.begin(), kinds.end(),
                        [&](const KindRow& row) { return row.kind == kind; })
        ->name;
}

std::string choiceKindsText()
{
    std::string text;
    for (const KindRow& row : kinds) {
        text += (text.empty() ? "" : ", ") + std::string(row.shown);
    }
    return text;
}

tl::expected<Choice, std::string> Choice::of(std::string_view text)
{
    const std::string_view name = text.substr(0, text.find(':'));
    const auto row = std::find_if(kinds.begin(), kinds.end(),
                                  [&](const KindRow& one) { return one.name == name; });
    const std::string quoted = "\"" + std::string(text) + "\" ";
    if (row == kinds.end()) {
        return wrong(quoted + "does not say how to choose pages; there are " + choiceKindsText());
    }
    const bool hasArgument = name.size() < text.size();
    if (hasArgument && row->argument == Argument::None) {
        return wrong(quoted + "has a colon too many; write " + row->shown);
    }
    if (!hasArgument && row->argument == Argument::Needed) {
        return wrong(quoted + "says too little; write for example " + row->shown);
    }
    Choice choice;
    choice.kind = row->kind;
    choice.text = text;
    if (hasArgument) {
        const std::string_view argument = text.substr(name.size() + 1);
        choice.argument = QString::fromUtf8(argument.data(), static_cast<int>(argument.size()));
    }
    if (const Checked read = row->read(choice); !read) {
        return wrong(quoted + read.error());
    }
    return choice;
}

} // namespace vantora
