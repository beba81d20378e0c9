#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace vantora {

/// What pages can be chosen by; in the order in which finding out costs more.
enum class ChoiceKind {
    Range,
    First,
    Last,
    Odd,
    Even,
    Every,
    Label,
    Bookmark,
    Size,
    Portrait,
    Landscape,
    Text,
    NoText,
    Blank,
    Colour,
    Grey,
    Duplicate,
};

/// A size in points, as a page is shown.
struct ShownSize {
    double width = 0;
    double height = 0;
};

/// One way to choose pages, written KIND or KIND:ARGUMENT, such as "last:2" or "text:Draft".
struct Choice {
    /// The error is a sentence that names the text and says what may stand there.
    static tl::expected<Choice, std::string> of(std::string_view text);

    ChoiceKind kind = ChoiceKind::Range;
    std::string text;               ///< as it was given
    QString argument;               ///< what follows the colon
    int count = 1;                  ///< of First and Last; the step of Every
    int offset = 0;                 ///< of Every: the remainder of the pages' numbers
    ShownSize size;                 ///< of Size
    bool eitherOrientation = false; ///< of Size: a format by its name
    bool isStrict = false;          ///< of Blank: the noise of scanners counts, too
    QRegularExpression pattern;     ///< of Text and Bookmark
};

/// What stands before the colon: "no-text".
const char* choiceName(ChoiceKind kind);

/// The kinds for people: "range:1,4-6, first[:N], ...".
std::string choiceKindsText();

} // namespace vantora
