#include "VantoraHost/desktop/texts/Translations.h"
#include "VantoraHost/core/PageRangeFault.h"
#include "VantoraHost/desktop/choosing/ChoosePane.h"
#include "VantoraHost/desktop/documents/DocumentCommands.h"
#include "VantoraHost/desktop/documents/DocumentsPane.h"
#include "VantoraHost/desktop/run/ResultsPane.h"
#include "VantoraHost/desktop/run/RunBar.h"
#include "VantoraHost/desktop/run/RunOutlook.h"
#include "VantoraHost/desktop/run/UndoController.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"
#include "tests/VantoraHost/desktop/OpenWindow.h"

#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <gmock/gmock.h>

namespace {

using namespace vantora;
using namespace vantora::desktop;
using testing::HasSubstr;

/// A user of a language and country.
class User {
public:
    explicit User(const char* locale) : translations_(QLocale(QLatin1String(locale)))
    {
        QLocale::setDefault(QLocale(QLatin1String(locale)));
    }
    ~User() { QLocale::setDefault(before_); }

    User(const User&) = delete;
    User& operator=(const User&) = delete;

private:
    const QLocale before_;
    const Translations translations_;
};

QChar letterOf(QString text)
{
    text.replace("&&", " ");
    const int mark = text.indexOf('&');
    return mark < 0 || mark + 1 >= text.size() ? QChar() : text.at(mark + 1).toLower();
}

/// All menus of a window, filled, and what its widgets show as one.
std::vector<QList<QAction*>> menusOf(QWidget& window)
{
    std::vector<QList<QAction*>> menus;
    for (auto* menu : window.findChildren<QMenu*>()) {
        emit menu->aboutToShow();
        menus.push_back(menu->actions());
    }
    for (const auto* widget : window.findChildren<QWidget*>()) {
        if (widget->contextMenuPolicy() == Qt::ActionsContextMenu) {
            menus.push_back(widget->actions());
        }
    }
    return menus;
}

class Languages : public OpenWindow {};

TEST_F(Languages, GiveEachEntryOfAMenuItsOwnLetterAndLeaveThoseOfTheMenusToThem)
{
    for (const char* locale : {"en_GB", "de_DE"}) {
        SCOPED_TRACE(locale);
        const User user(locale);
        open();
        add({write("a.pdf", support::documentOfPages(3))});
        bench().markForAll("1");
        std::size_t entries = 0;
        for (const auto& menu : menusOf(*window)) {
            QMap<QChar, QString> letters;
            for (const QAction* action : menu) {
                const QChar letter = letterOf(action->text());
                EXPECT_FALSE(!letter.isNull() && letters.contains(letter))
                    << action->text().toStdString() << " and "
                    << letters.value(letter).toStdString();
                letters.insert(letter, action->text());
                ++entries;
            }
        }
        EXPECT_GT(entries, 40U);
        QSet<QChar> letters;
        for (const QAction* menu : window->menuBar()->actions()) {
            letters.insert(letterOf(menu->text()));
        }
        ASSERT_EQ(letters.size(), 5);
        for (const auto* button : window->findChildren<QAbstractButton*>()) {
            EXPECT_FALSE(letters.contains(letterOf(button->text())))
                << button->text().toStdString();
        }
        for (const auto* label : window->findChildren<QLabel*>()) {
            EXPECT_FALSE(letters.contains(letterOf(label->text()))) << label->text().toStdString();
        }
    }
}

/// Whether a text is a name: of an action, its group, a format of paper, or a file.
bool isName(const QString& text)
{
    static const QSet<QString> names = {"Delete Pages", "Pages",   "Letter",   "Legal",
                                        "Executive",    "Tabloid", "Statement"};
    static const QRegularExpression format("^[AB]\\d$");
    return names.contains(text) || format.match(text).hasMatch() || text.contains('/');
}

/// Translates into texts that can be told from those that nobody translates.
class Marking : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* source, const char*, int) const override
    {
        return QStringLiteral("«") + QString::fromUtf8(source) + QStringLiteral("»");
    }
};

/// What a widget says, to those who see it and to those who hear it.
QStringList textsOf(const QWidget& widget)
{
    QStringList texts = {widget.windowTitle(), widget.toolTip(), widget.accessibleName()};
    for (const char* name : {"text", "title", "placeholderText", "currentText"}) {
        if (qobject_cast<const QLineEdit*>(&widget) == nullptr || qstrcmp(name, "text") != 0) {
            texts << widget.property(name).toString();
        }
    }
    for (const QAction* action : widget.actions()) {
        texts << action->text() << action->toolTip();
    }
    if (const auto* combo = qobject_cast<const QComboBox*>(&widget)) {
        for (int i = 0; i < combo->count(); ++i) {
            texts << combo->itemText(i);
        }
    }
    const auto* view = qobject_cast<const QAbstractItemView*>(&widget);
    if (const auto* model = view == nullptr ? nullptr : view->model()) {
        for (int i = 0; i < model->columnCount(); ++i) {
            texts << model->headerData(i, Qt::Horizontal).toString();
        }
    }
    return texts;
}

TEST_F(Languages, AreThoseOfAllThatTheWindowSays)
{
    Marking marking;
    QCoreApplication::installTranslator(&marking);
    open();
    add({write("a.pdf", support::documentOfPages(3)), write("b.pdf", "no PDF")});
    bench().markForAll("1");
    waitForPlan("will go");
    waitForRun();
    for (auto* menu : window->findChildren<QMenu*>()) {
        emit menu->aboutToShow();
    }
    QSet<QString> untranslated;
    std::size_t translated = 0;
    for (const auto* widget : window->findChildren<QWidget*>()) {
        for (const QString& text : textsOf(*widget)) {
            if (text.contains(QStringLiteral("«"))) {
                ++translated;
            } else if (!isName(text) && std::any_of(text.begin(), text.end(),
                                                    [](QChar mark) { return mark.isLetter(); })) {
                untranslated.insert(text);
            }
        }
    }
    EXPECT_GT(translated, 150U);
    EXPECT_EQ(QStringList(untranslated.begin(), untranslated.end()).join('\n').toStdString(), "");
}

QStringList countedTexts(int count)
{
    RunOutlook outlook;
    outlook.plan.documents = static_cast<std::size_t>(count);
    outlook.plan.pages = static_cast<std::uint64_t>(count);
    return {DocumentsPane::tr("%n document(s)", nullptr, count),
            ResultsPane::tr("%n page(s) removed", nullptr, count),
            ChoosePane::tr("%n page(s)", nullptr, count),
            UndoController::tr("%n result(s) removed", nullptr, count),
            outlookText(outlook),
            AddDocuments(*std::make_unique<DocumentList>(),
                         std::vector<Document>(static_cast<std::size_t>(count)), 0)
                .text()};
}

TEST(Translations, CountInTheLanguageOfTheUser)
{
    const QStringList english[] = {{"1 document", "1 page removed", "1 page", "1 result removed",
                                    "1 page will go from 1 document.", "adding a document"},
                                   {"3 documents", "3 pages removed", "3 pages",
                                    "3 results removed", "3 pages will go from 3 documents.",
                                    "adding 3 documents"}};
    const QStringList german[] = {
        {"1 Dokument", "1 Seite entfernt", "1 Seite", "1 Ergebnis entfernt",
         "Zu entfernen: 1 Seite aus 1 Dokument.", "1 Dokument hinzufügen"},
        {"3 Dokumente", "3 Seiten entfernt", "3 Seiten", "3 Ergebnisse entfernt",
         "Zu entfernen: 3 Seiten aus 3 Dokumenten.", "3 Dokumente hinzufügen"}};
    const struct {
        const char* locale;
        const QStringList* texts;
    } rows[] = {
        {"en_US", english}, {"en_GB", english}, {"de_DE", german},
        {"de_AT", german},  {"fr_FR", english}, {"C", english},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.locale);
        const User user(row.locale);
        EXPECT_EQ(countedTexts(1), row.texts[0]);
        EXPECT_EQ(countedTexts(3), row.texts[1]);
    }
}

TEST(Translations, WriteFiguresAsInTheCountryOfTheUser)
{
    const struct {
        const char* locale;
        QStringList texts;
    } rows[] = {
        {"C", {"12,345", "1 byte", "812 bytes", "10.1 kB", "0.4"}},
        {"en_US", {"12,345", "1 byte", "812 bytes", "10.1 kB", "0.4"}},
        {"de_DE", {"12.345", "1 Byte", "812 Byte", "10,1 kB", "0,4"}},
        {"de_CH", {"12’345", "1 Byte", "812 Byte", "10.1 kB", "0.4"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.locale);
        const User user(row.locale);
        EXPECT_EQ((QStringList{numberText(12345), sizeShown(1), sizeShown(812), sizeShown(10100),
                               figureText("0.4")}),
                  row.texts);
    }
}

TEST(Sentences, AreTranslatedWithWhatStandsInThem)
{
    const struct {
        const char* name;
        std::string sentence;
        const char* german;
    } rows[] = {
        {"without a value", "there is no such file", "die Datei gibt es nicht"},
        {"a value at the end", "damaged beyond repair: no page tree",
         "so beschädigt, dass nichts zu retten ist: no page tree"},
        {"a value within", "the output /out/a.pdf exists already",
         "das Ergebnis /out/a.pdf gibt es schon"},
        {"the longer of two that fit",
         "the range 9 names pages up to 9, but the document has 1 page; none was taken out",
         "der Bereich 9 nennt Seiten bis 9, aber das Dokument hat 1 Seite; keine wurde entfernt"},
        {"a sentence in a sentence",
         "line 3 has the page range \"1;2\", which has a semicolon in \"1;2\"; write 1,2",
         "Zeile 3 hat den Seitenbereich „1;2“; dieser hat ein Semikolon in \"1;2\"; schreiben Sie "
         "1,2"},
        {"a name that reads as a sentence", "the output exists already is a folder",
         "das Ergebnis exists already ist ein Ordner"},
        {"a name that reads as marks", "the output %2%1 is the input %1",
         "das Ergebnis %2%1 ist das Dokument %1"},
        {"a name that breaks the line", "the output a\nb is a folder",
         "das Ergebnis a\\nb ist ein Ordner"},
        {"a value that is missing", "the output is a folder", "the output is a folder"},
        {"one that nobody knows", "it is as it is", "it is as it is"},
        {"nothing", "", ""},
    };
    const User user("de_DE");
    for (const auto& row : rows) {
        EXPECT_EQ(shownSentence(row.sentence).toStdString(), row.german) << row.name;
    }
}

TEST(Sentences, StayAsTheyAreInEnglish)
{
    const User user("en_GB");
    for (const char* sentence :
         {"there is no such file", "the output %2%1 is the input %1", "has 1;2; write it"}) {
        EXPECT_EQ(shownSentence(sentence).toStdString(), sentence);
    }
}

TEST(Sentences, ThatTheCoreSaysOfPageRangesAreAllTranslated)
{
    const User user("de_DE");
    for (const char* range : {"0", "2-", "-3", "5-2", "1;2", "last", "1,,2", ",1", "1-2-3", "-",
                              "01", "4-4", "1 2", "99999999999", "x"}) {
        const auto fault = pageRangeFault(QString::fromLatin1(range));
        ASSERT_TRUE(fault) << range;
        const std::string english = fault->toStdString();
        EXPECT_NE(shownSentence(english).toStdString(), english) << range;
    }
}

TEST_F(Languages, SayWhyADocumentIsLeftOutAndWhatToDo)
{
    const User user("de_DE");
    open();
    write("a.pdf", support::documentOfPages(3));
    scratch.write("out/a.pdf", "here already");
    add({QString::fromStdString(scratch.path("in/a.pdf")),
         QString::fromStdString(scratch.path("in/missing.pdf")),
         write("locked.pdf",
               support::rewritten(support::documentOfPages(3), "--encrypt secret owner 256 --"))});
    const auto state = [&](int row) {
        return bench().list.index(row, DocumentList::State).data().toString().toStdString();
    };
    EXPECT_EQ(state(1), "nicht lesbar: die Datei gibt es nicht");
    EXPECT_THAT(state(2), HasSubstr("gesperrt"));
    bench().markForAll("1");
    waitForPlan("gibt es schon");
    part<QLineEdit>("folderEdit").clear();
    waitForPlan("ählen Sie einen Ordner für die Ergebnisse.");
}

} // namespace
