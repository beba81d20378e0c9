#include "VantoraHost/desktop/choosing/ChoiceTexts.h"

#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace vantora::desktop {

namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ChoiceTexts)
};

bool needsArgument(ChoiceKind kind)
{
    const auto all = allChoiceWords();
    const auto words = std::find_if(all.begin(), all.end(),
                                    [&](const ChoiceWords& one) { return one.kind == kind; });
    return words->field != ChoiceField::None && words->field != ChoiceField::Strictness;
}

} // namespace

std::vector<ChoiceWords> allChoiceWords()
{
    using Kind = ChoiceKind;
    using Field = ChoiceField;
    return {
        {Kind::Blank, Field::Strictness, Words::tr("Blank"), {}},
        {Kind::Text, Field::Words, Words::tr("With the words"),
         Words::tr("such as Draft; /expression/ for a regular one")},
        {Kind::NoText, Field::None, Words::tr("Without any text"), {}},
        {Kind::Duplicate, Field::None, Words::tr("Same as an earlier page"), {}},
        {Kind::First, Field::Count, Words::tr("The first"), {}},
        {Kind::Last, Field::Count, Words::tr("The last"), {}},
        {Kind::Every, Field::Step, Words::tr("One of every"), {}},
        {Kind::Odd, Field::None, Words::tr("With odd numbers"), {}},
        {Kind::Even, Field::None, Words::tr("With even numbers"), {}},
        {Kind::Range, Field::Range, Words::tr("With the numbers"), Words::tr("such as 1,4-6,9-15")},
        {Kind::Label, Field::Label, Words::tr("With the labels"), Words::tr("such as iv-x or A-3")},
        {Kind::Bookmark, Field::Title, Words::tr("Under the bookmark"),
         Words::tr("its title, such as Appendix")},
        {Kind::Size, Field::Size, Words::tr("Of the size"), Words::tr("such as A4 or 210x297mm")},
        {Kind::Portrait, Field::None, Words::tr("Upright"), {}},
        {Kind::Landscape, Field::None, Words::tr("Sideways"), {}},
        {Kind::Colour, Field::None, Words::tr("In colour"), {}},
        {Kind::Grey, Field::None, Words::tr("Without colour"), {}},
    };
}

QString inWords(const std::string& choice)
{
    const std::size_t colon = choice.find(':');
    const std::string name = choice.substr(0, colon);
    for (const ChoiceWords& one : allChoiceWords()) {
        if (name == choiceName(one.kind)) {
            return colon == std::string::npos
                       ? one.words
                       : Words::tr("%1: %2", "a kind of choice and what it is about")
                             .arg(one.words, shownText(choice.substr(colon + 1)));
        }
    }
    return shownText(choice);
}

bool ChoiceDraft::isComplete() const
{
    return kind && (!needsArgument(*kind) || !argument.trimmed().isEmpty());
}

QString ChoiceDraft::text() const
{
    const QString name = QLatin1String(choiceName(*kind));
    return argument.isNull() ? name : name + ':' + argument;
}

QString ChoiceDraft::fault() const
{
    if (!isComplete()) {
        return {};
    }
    const auto choice = Choice::of(text().toStdString());
    return choice ? QString() : shownSentence(choice.error());
}

ChoiceTexts ChoiceTexts::of(const std::vector<ChoiceDraft>& drafts, bool keepsOnly)
{
    ChoiceTexts texts;
    for (const ChoiceDraft& draft : drafts) {
        if (!draft.isComplete() || !draft.fault().isEmpty()) {
            return {};
        }
        QStringList& list = draft.isException ? texts.except
                            : keepsOnly       ? texts.keep
                                              : texts.choose;
        list << draft.text();
    }
    return texts.isEmpty() ? ChoiceTexts() : texts;
}

QStringList ChoiceTexts::arguments() const
{
    QStringList arguments;
    for (const auto& [option, list] :
         {std::pair("--choose", &choose), {"--keep", &keep}, {"--except", &except}}) {
        for (const QString& text : *list) {
            arguments << option << text;
        }
    }
    return arguments;
}

} // namespace vantora::desktop
