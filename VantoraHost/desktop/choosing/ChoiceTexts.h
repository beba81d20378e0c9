#pragma once

#include "VantoraHost/core/choices/Choice.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// What a kind of choice has behind its colon, by what a person gives it with.
enum class ChoiceField { None, Range, Count, Step, Label, Title, Size, Words, Strictness };

/// A kind of choice in words.
struct ChoiceWords {
    ChoiceKind kind;
    ChoiceField field;
    QString words; ///< as an entry of a list: "Blank"
    QString hint;  ///< what can stand in its field; empty where that needs no saying
};

/// All kinds, those first that people look for most.
std::vector<ChoiceWords> allChoiceWords();

/// A choice as core writes it, "last:2", in words: "The last: 2".
QString inWords(const std::string& choice);

/// A choice as a person is making it.
struct ChoiceDraft {
    std::optional<ChoiceKind> kind;
    QString argument; ///< null where the kind has none, or none is given
    bool isException = false;

    /// Whether what it needs is there, be it right or wrong.
    bool isComplete() const;

    /// As core reads it: "last:2". Of a complete one only.
    QString text() const;

    /// What is wrong with it, a sentence of core's; empty for nothing, and while it isn't complete.
    QString fault() const;
};

/// Pages that go, in the words of the program's options.
struct ChoiceTexts {
    QStringList choose;
    QStringList keep; ///< instead of choose
    QStringList except;

    /// Those of drafts; none while a draft is not complete or wrong, or nothing is chosen.
    static ChoiceTexts of(const std::vector<ChoiceDraft>& drafts, bool keepsOnly);

    bool isEmpty() const { return choose.isEmpty() && keep.isEmpty(); }
    bool operator==(const ChoiceTexts& other) const
    {
        return choose == other.choose && keep == other.keep && except == other.except;
    }

    /// The options of the command `pages`.
    QStringList arguments() const;
};

} // namespace vantora::desktop
