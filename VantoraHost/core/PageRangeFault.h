#pragma once

#include <QtCore/QString>

#include <optional>

namespace vantora {

/// The text, or its beginning and "..." where it is longer than so many characters.
QString shortened(const QString& text, int longest);

/// A range without the commas and white space at its end, which say nothing. The options dialog
/// leaves out whatever stands there, but where a person can't see the result, a dash or a word
/// isn't dropped without asking: "2-" would become page 2.
QString withoutLooseEnd(QString range);

/// What is wrong with a range, and what to write instead, as a sentence that follows the range:
/// `goes down at "6-4"; write 4-6`. None when it names exactly the pages that it seems to name:
/// it is valid then (CActionUtils::ValidatePageRange), and reads as it was written, which is not
/// so with every valid one.
std::optional<QString> pageRangeFault(const QString& range);

} // namespace vantora
