#include "VantoraHost/desktop/sentences/Sentences.h"

#include "VantoraHost/core/ShownText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

#include <algorithm>
#include <optional>

namespace vantora::desktop {

namespace {

// What the window shows of other layers' sentences. Where several fit, the first is meant.
constexpr const char* templates[] = {
    QT_TRANSLATE_NOOP("Sentences", "there is no such file"),
    QT_TRANSLATE_NOOP("Sentences", "is a folder, not a file"),
    QT_TRANSLATE_NOOP("Sentences", "is a device or pipe, not a file"),
    QT_TRANSLATE_NOOP("Sentences", "is empty (0 bytes)"),
    QT_TRANSLATE_NOOP("Sentences", "is no PDF: it does not begin with %PDF-"),
    QT_TRANSLATE_NOOP("Sentences", "damaged beyond repair"),
    QT_TRANSLATE_NOOP("Sentences", "damaged beyond repair: %1"),
    QT_TRANSLATE_NOOP("Sentences", "damaged: none of its pages can be recovered"),
    QT_TRANSLATE_NOOP("Sentences", "damaged: %1"),
    QT_TRANSLATE_NOOP("Sentences", "is encrypted and needs a password"),
    QT_TRANSLATE_NOOP("Sentences", "the password given does not open it"),
    QT_TRANSLATE_NOOP("Sentences", "none of the %1 passwords given opens it"),
    QT_TRANSLATE_NOOP("Sentences", "its table of objects was damaged and has been rebuilt"),
    QT_TRANSLATE_NOOP("Sentences",
                      "it is signed in field \"%1\", and no signature holds once it is changed"),
    QT_TRANSLATE_NOOP("Sentences", "can't be opened"),
    QT_TRANSLATE_NOOP("Sentences", "has no pages"),
    QT_TRANSLATE_NOOP("Sentences", "can't be saved"),
    QT_TRANSLATE_NOOP("Sentences", "there is not enough memory for it"),
    QT_TRANSLATE_NOOP("Sentences", "it has %1 pages after the actions where %2 were to be left"),
    QT_TRANSLATE_NOOP("Sentences", "the range %1 names every page, so none would be left"),
    QT_TRANSLATE_NOOP("Sentences", "the range %1 names every page; the document is left out"),
    QT_TRANSLATE_NOOP("Sentences", "the range %1 names every page; one blank page is left"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the range %1 names pages up to %2, but the document has %3 page; none was taken out"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the range %1 names pages up to %2, but the document has %3 pages; none was taken out"),
    QT_TRANSLATE_NOOP("Sentences",
                      "the range %1 names pages up to %2, but the document has %3 pages"),
    QT_TRANSLATE_NOOP("Sentences",
                      "the range %1 names pages up to %2, but the document has %3 page"),
    QT_TRANSLATE_NOOP("Sentences", "was changed while it was looked at"),
    QT_TRANSLATE_NOOP("Sentences", "it can't be drawn"),
    QT_TRANSLATE_NOOP("Sentences", "the folder can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "choose a folder for the results"),
    QT_TRANSLATE_NOOP("Sentences", "the name \"%1\" takes {name}, {ext} and {number} only"),
    QT_TRANSLATE_NOOP("Sentences", "the name \"%1\" holds a slash or a single brace"),
    QT_TRANSLATE_NOOP("Sentences", "the name \"%1\" is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 exists already"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 is a folder"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 is a device or pipe, not a file"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 is the input itself"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 is the input %2"),
    QT_TRANSLATE_NOOP("Sentences", "the output %1 got lost"),
    QT_TRANSLATE_NOOP("Sentences", "it is named twice"),
    QT_TRANSLATE_NOOP("Sentences", "%1 would be written to %2, too"),
    QT_TRANSLATE_NOOP("Sentences", "%1 is the same file"),
    QT_TRANSLATE_NOOP("Sentences", "the output folder %1 is not there"),
    QT_TRANSLATE_NOOP("Sentences", "the output folder %1 can't be made: %2"),
    QT_TRANSLATE_NOOP("Sentences", "the output folder %1 can't be used: %2"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "the output folder %1 was exchanged for another one while the run was at work"),
    QT_TRANSLATE_NOOP("Sentences", "the output folder %1 is a link or lies behind one, and outputs "
                                   "stay in the folder that was named"),
    QT_TRANSLATE_NOOP("Sentences", "the backup %1 exists already"),
    QT_TRANSLATE_NOOP("Sentences", "the backup %1 can't be made: %2"),
    QT_TRANSLATE_NOOP("Sentences", "the backup %1 is itself an input"),
    QT_TRANSLATE_NOOP("Sentences", "its owner or mode could not be kept: only the owner and the "
                                   "administrator may give a file to others"),
    QT_TRANSLATE_NOOP("Sentences", "is not there any more"),
    QT_TRANSLATE_NOOP("Sentences", "was changed after the run"),
    QT_TRANSLATE_NOOP("Sentences", "has no backup %1"),
    QT_TRANSLATE_NOOP("Sentences", "its backup %1 is not the original any more"),
    QT_TRANSLATE_NOOP("Sentences", "is just being changed"),
    QT_TRANSLATE_NOOP("Sentences", "replaced a file, which was not kept"),
    QT_TRANSLATE_NOOP("Sentences", "is a file beside its original"),
    QT_TRANSLATE_NOOP("Sentences", "it took longer than %1"),
    QT_TRANSLATE_NOOP("Sentences", "it needs more memory than its worker may use, %1 MB"),
    QT_TRANSLATE_NOOP("Sentences", "the worker process that was at it ended: %1"),
    QT_TRANSLATE_NOOP("Sentences", "a worker process can't be started: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the report can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "the report can't be written: %1"),
    QT_TRANSLATE_NOOP("Sentences", "another run is writing this report"),
    QT_TRANSLATE_NOOP("Sentences", "others can write to this report"),
    QT_TRANSLATE_NOOP("Sentences", "there is no step to be saved"),
    QT_TRANSLATE_NOOP("Sentences", "the action \"%1\" is not installed"),
    QT_TRANSLATE_NOOP("Sentences", "the action list holds no steps"),
    QT_TRANSLATE_NOOP("Sentences", "not an action list: it holds no steps"),
    QT_TRANSLATE_NOOP("Sentences", "not a favourite: it holds no options"),
    QT_TRANSLATE_NOOP("Sentences", "not a tool-settings file: it holds no options"),
    QT_TRANSLATE_NOOP("Sentences", "its options are damaged"),
    QT_TRANSLATE_NOOP("Sentences", "its options don't say which action they are for"),
    QT_TRANSLATE_NOOP("Sentences", "no action list of this name is saved"),
    QT_TRANSLATE_NOOP("Sentences", "no favourite of this name is saved"),
    QT_TRANSLATE_NOOP("Sentences", "the name is empty"),
    QT_TRANSLATE_NOOP("Sentences", "the name is too long"),
    QT_TRANSLATE_NOOP("Sentences", "a name must not contain a slash or a backslash"),
    QT_TRANSLATE_NOOP("Sentences",
                      "a name that ends in .xqq stands for a file, not for a list of yours"),
    QT_TRANSLATE_NOOP("Sentences", "the list is full"),
    QT_TRANSLATE_NOOP("Sentences", "can't be written"),
    QT_TRANSLATE_NOOP("Sentences", "exists already"),
    QT_TRANSLATE_NOOP("Sentences", "names no page"),
    QT_TRANSLATE_NOOP("Sentences", "names page 0, and pages count from 1"),
    QT_TRANSLATE_NOOP("Sentences", "begins with a comma"),
    QT_TRANSLATE_NOOP("Sentences", "ends with a comma"),
    QT_TRANSLATE_NOOP("Sentences", "has two commas with no page between them"),
    QT_TRANSLATE_NOOP("Sentences", "has %1, which is no page number"),
    QT_TRANSLATE_NOOP("Sentences",
                      "has %1, which is not written in the digits 0 to 9: %2 would have meant %3"),
    QT_TRANSLATE_NOOP("Sentences", "has zeros before %1; write %2"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "has a number in %1 that is higher than %2, the highest of a page: it would have meant %3"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "has a space inside a number in %1: it would have meant %2; write a comma between pages"),
    QT_TRANSLATE_NOOP("Sentences", "names one page as a range in %1; write %2"),
    QT_TRANSLATE_NOOP("Sentences", "goes down at %1; write %2"),
    QT_TRANSLATE_NOOP("Sentences", "has more than one dash in %1; write a comma between ranges"),
    QT_TRANSLATE_NOOP("Sentences", "has a dash without pages"),
    QT_TRANSLATE_NOOP("Sentences", "has no page after the dash of %1; write the last one, too "
                                   "(vantora info tells how many there are)"),
    QT_TRANSLATE_NOOP("Sentences", "has no page before the dash of %1; write %2"),
    QT_TRANSLATE_NOOP("Sentences",
                      "has the dash %1 in %2, which is not the one of a keyboard; write %3"),
    QT_TRANSLATE_NOOP("Sentences", "has a semicolon in %1; write %2"),
    QT_TRANSLATE_NOOP("Sentences", "has %1, and pages go by their numbers alone; write the number, "
                                   "also for the last page (vantora info tells it)"),
    QT_TRANSLATE_NOOP("Sentences",
                      "has a tab or the end of a line within; write a comma between the pages"),
    QT_TRANSLATE_NOOP("Sentences", "has white space in it that is not a space; leave it out"),
    QT_TRANSLATE_NOOP("Sentences", "no page at all"),
    QT_TRANSLATE_NOOP("Sentences", "page %1"),
    QT_TRANSLATE_NOOP("Sentences", "pages %1 to the end"),
    QT_TRANSLATE_NOOP("Sentences", "pages %1 to %2"),
    QT_TRANSLATE_NOOP("Sentences", "\"%1\" needs a page range such as 1,4-6,9-15,21; this one %2"),
    QT_TRANSLATE_NOOP("Sentences", "\"%1\" needs a number of pages, from 1"),
    QT_TRANSLATE_NOOP("Sentences", "\"%1\" needs words, or a regular expression between slashes"),
    QT_TRANSLATE_NOOP("Sentences", "\"%1\" is no regular expression: %2 at character %3"),
    QT_TRANSLATE_NOOP(
        "Sentences",
        "\"%1\" needs a paper format such as A4 or Letter, or a size such as 210x297mm"),
    QT_TRANSLATE_NOOP("Sentences", "the list of ranges can't be read: %1"),
    QT_TRANSLATE_NOOP("Sentences", "line %1 names \"%2\", as line %3 does"),
    QT_TRANSLATE_NOOP("Sentences", "line %1 names \"%2\", %3"),
    QT_TRANSLATE_NOOP("Sentences",
                      "line %1 has no range; a line is a path, a tab (or a comma) and a range"),
    QT_TRANSLATE_NOOP("Sentences", "line %1 has the page range \"%2\", which %3"),
    QT_TRANSLATE_NOOP("Sentences", "line %1 names no document"),
    QT_TRANSLATE_NOOP("Sentences", "line %1 opens a quote that nothing closes"),
    QT_TRANSLATE_NOOP("Sentences", "check its permissions"),
    QT_TRANSLATE_NOOP("Sentences", "get an undamaged copy of it"),
    QT_TRANSLATE_NOOP("Sentences", "decrypt it with the program that encrypted it"),
    QT_TRANSLATE_NOOP("Sentences", "check space and permissions there, or name another place"),
    QT_TRANSLATE_NOOP("Sentences", "move it away, since no backup is ever replaced"),
    QT_TRANSLATE_NOOP("Sentences", "there is nothing to give back"),
    QT_TRANSLATE_NOOP("Sentences",
                      "look at both, and put it back by hand if what was changed isn't needed"),
    QT_TRANSLATE_NOOP("Sentences", "run it again"),
    QT_TRANSLATE_NOOP("Sentences", "the installation is incomplete; install it again"),
    QT_TRANSLATE_NOOP("Sentences", "a valid one is 1,4-6,9-15,21"),
    QT_TRANSLATE_NOOP("Sentences",
                      "leave out the document over which it ended, and run all of it again"),
    QT_TRANSLATE_NOOP("Sentences", "name it otherwise"),
};

// What stands at %1, %2 and so on in a text that fits a template; nothing where it doesn't. What
// stands there ends where the template's next words begin.
std::optional<QStringList> valuesIn(const QString& text, const QString& form)
{
    QStringList values;
    int at = 0;
    int from = 0;
    for (int number = 1;; ++number) {
        const int mark = form.indexOf(QLatin1Char('%') + QString::number(number), from);
        const QString words = form.mid(from, mark < 0 ? -1 : mark - from);
        if (number == 1) {
            if (!text.startsWith(words)) {
                return std::nullopt;
            }
            at = words.size();
        } else {
            const int next = mark < 0 && words.isEmpty() ? text.size()
                             : mark < 0                  ? text.size() - words.size()
                                                         : text.indexOf(words, at);
            if (next <= at || !text.midRef(next).startsWith(words)) {
                return std::nullopt;
            }
            values << text.mid(at, next - at);
            at = next + words.size();
        }
        if (mark < 0) {
            return at == text.size() ? std::optional(values) : std::nullopt;
        }
        from = mark + 2;
    }
}

// Whether what follows these words of a template is a sentence again, and not a name, which stays
// as it is whatever it says.
bool leadToSentence(const QString& words)
{
    const QStringList leads = {": ", "meant ", "which ", "this one ", "\", "};
    return std::any_of(leads.begin(), leads.end(),
                       [&](const QString& lead) { return words.endsWith(lead); });
}

QString translated(const QString& sentence);

// The translation of a template with its values in it, none of which is taken for a mark.
QString filled(const char* form, const QStringList& values)
{
    const QString source = QString::fromLatin1(form);
    const QString text = QCoreApplication::translate("Sentences", form);
    QString whole;
    for (int i = 0; i < text.size(); ++i) {
        const int number = text[i] == '%' && i + 1 < text.size() ? text[i + 1].digitValue() : -1;
        if (number < 1 || number > values.size()) {
            whole += text[i];
            continue;
        }
        const QString& value = values[number - 1];
        const int mark = source.indexOf(QLatin1Char('%') + QString::number(number));
        whole += leadToSentence(source.left(mark)) ? translated(value) : value;
        ++i;
    }
    return whole;
}

QString translated(const QString& sentence)
{
    for (const char* form : templates) {
        if (const auto values = valuesIn(sentence, QString::fromLatin1(form))) {
            return filled(form, *values);
        }
    }
    return sentence;
}

} // namespace

QString shownSentence(const std::string& sentence)
{
    return translated(QString::fromStdString(shown(sentence)));
}

} // namespace vantora::desktop
