#pragma once

#include "VantoraApp/binding/Shared.h"

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtGui/QMatrix>

#include <functional>

class QComboBox;
class QFont;
class QIcon;
class QLabel;
class QTextEdit;

/// Operations that all actions share. All are static and keep no state; each section has a
/// source file of its own, which it names.
class VANTORA_SHARED CActionUtils {
public:
    // Page ranges: texts such as 1,4-6,9-15,21. Pages are counted from 1.
    // (page_ranges/PageRanges.cpp)

    /// Whether the text names pages: numbers without leading zeros, alone or as first-last, joined
    /// by commas; spaces are ignored and one trailing comma passes. A range must ascend unless
    /// `allowDescending` is set.
    static bool ValidatePageRange(QString text, bool allowDescending);

    /// Whether each of the texts joined by ";" is a valid page range, descending ones included.
    static bool ValidateSplitPageRange(QString text);

    /// Appends the pages that the text names in a document of `pageCount` pages and sorts the whole
    /// list; a page already in the list is not repeated. Pages above `pageCount` are left out, and
    /// odd or even ones if asked. What can't be read counts as 0, so a text that was not validated
    /// may give page 0. Returns false, with the list untouched, only for the empty text.
    static bool GetPageList(const QString& text, int pageCount, bool leaveOutOdd, bool leaveOutEven,
                            QList<int>* pages);

    /// Appends the runs of consecutive pages in `pages` (ascending, no repeats) as pairs of first
    /// page and number of pages, the run with the highest pages first: the order in which they can
    /// be deleted without renumbering the pages still to be deleted.
    static void CollectPageList(QList<int>* pages, QList<int>* runs);

    // The folders of CUtils under the names that actions know them by. (environment/FolderTree.cpp)

    static QString GetSettingsFolder();
    static QString GetCollectionsFolder();
    static QString GetSequenceFolder();

    /// CUtils::GetAppDataToolsFolder.
    static QString GetVantoraAppDataFolder();

    // Numbers and names for file names. Files are looked for, nothing is created.
    // (environment/FileNames.cpp)

    /// The decimal number, or the text, with zeros put in front of it up to `width` characters; a
    /// minus sign stands behind the zeros.
    static QString GetStringWithLeadingZeroesFromNumber(int number, int width);
    static QString GetStringWithLeadingZeroesFromString(QString text, int width);

    /// The path itself when no file exists there, else the first free of the paths with " (1)",
    /// " (2)", ... put before its last dot, or at its end when it has none.
    static QString AppendCopyNumberToFilename(QString path);

    /// Trims the text, then removes tabs, line ends and the characters < > : " / \ | ? * from it.
    static void FixStringForFilename(QString* text);

    /// The path with each "%ALLUSERSPROFILE%" replaced by the folder "All Users" beside the user's
    /// home, with a separator at its end.
    static QString ReplaceEnvironmentPaths(QString path);

    /// The nearest integer, the lower one of two equally near. Numbers beyond the integers give the
    /// last of them, no number at all gives 0. (geometry/Measures.cpp)
    static int Round(double x);

    // Commands of the rules for splitting. (settings/SplitCommands.cpp)

    /// The command's index in `gCommandsList`, whatever its case, or -1.
    static int SplitComGetCommandIndex(QString command);

    /// The command's keyword, or "INVALID_INDEX".
    static QString SplitComGetCommandString(int index);

    // What the user last visited and entered, in one settings file for all actions. A key names a
    // purpose and holds either a location or links. A change that cannot be written is lost.
    // (settings/RememberedPaths.cpp)

    /// Nothing is checked: the location need not exist and may be empty.
    static void SaveLastVisitedLocation(QString key, QString location);

    /// The key's location; the user's desktop folder when there is none.
    static QString GetLastVisitedLocation(QString key);

    /// Puts the link before the key's others; five different ones are kept.
    static void SaveLastEnteredLink(QString key, QString link);

    /// The key's links, the last one entered first.
    static QStringList GetLastEnteredLinks(QString key);

    // File search. (environment/FileSearch.cpp)

    /// The absolute paths of the files in the folder, and in all folders below it when `recursive`,
    /// that have one of the suffixes: without the dot, in any case. The order is that of a
    /// depth-first walk by the character codes of the names. Left out are hidden files and folders,
    /// links of either kind, folders that cannot be read, and names that are not text.
    static QStringList SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive);

    /// The same; folders that cannot be read, or not to their end, are added to `unreadable`.
    static QStringList SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive,
                                        QStringList& unreadable);

    /// The same for who doesn't want to wait for all of it: hands over each file when it is found,
    /// and ends when that returns false.
    static void SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive,
                                 QStringList& unreadable,
                                 const std::function<bool(const QString&)>& found);

    // Action lists: named sequences of actions that users put together.
    // (settings/CustomActionLists.cpp)

    /// Writes the options as a step of the action list that they name: "ActionListName" (a missing
    /// one counts as "Action"), "ActionListCategory", "ActionListOverwrite" and "ActionName", the
    /// action's display name. Appends to an existing list unless it is to be overwritten, and else
    /// creates one and removes these four keys from the options. Nothing is written, and nothing
    /// reported, when the name can't be that of a file in the folder and when the list can't be
    /// read or written.
    static void SaveAsCustomActionList(QMap<QString, QVariant>* prefs);

    /// The categories of the lists: "Default", "Favorites", and those that other lists have.
    static QStringList GetActionListCategories();

    // Placement on a page. (geometry/Placement.cpp)

    /// The matrix that takes the unit square to an object placed on a page, in the page's
    /// coordinates (y upwards). The object's natural size and the page's size are in points.
    ///
    /// Options, with what a missing one counts as: "sizeSpinBox" and "sizeSpinBoxY" (100), width
    /// and height in percent; "rotationSpinBox" (0), degrees clockwise; "horiznotalSpinBox" and
    /// "verticalSpinBox" (0), the distances from an edge in the unit "unitsComboBox" (3; see
    /// CUtils::Convert); "horizontalFromCombo" and "verticalFromCombo" (0), that edge: 0 left or
    /// top, 1 right or bottom, 2 centre.
    ///
    /// The size is scaled, then turned about its corner; the translation puts the bounding box of
    /// the result at its distances, which count to the right and downwards except from the right
    /// and bottom edges, where they count inwards.
    static QMatrix Prefs2Matrix(QMap<QString, QVariant>* prefs, double width, double height,
                                double pageWidth, double pageHeight);

    // Pickers: lists of small swatches for the combo box of a form, in place of what it showed
    // before. The list is as wide as the combo box is now and is freed with it.
    // (widgets/PickerComboBoxes.cpp)

    /// Ten colours, each under Qt::UserRole + 1, and "Custom...", with or without "(none)" before
    /// them.
    static void SetupColorPickerComboBox(QComboBox* combo, bool withNone);

    /// Solid, dash, dot, dash-dot and dash-dot-dot.
    static void SetupLineStylePickerComboBox(QComboBox* combo);

    /// None, single, double, thick, dotted, dashed and dash-dot.
    static void SetupUnderlineStylePickerComboBox(QComboBox* combo);

    /// Weights from 0.1 to 6 points.
    static void SetupLineWeightPickerComboBox(QComboBox* combo);

    /// The colour in a row of the picker with "(none)"; black for "(none)", for "Custom..." and
    /// where there is no row.
    static QColor GetColorPickerColor(int index);

    /// The row that has the colour in the picker with "(none)", or that of "Custom...".
    static int GetColorPickerIndex(QColor color);

    // Lists of font names, in place of what the combo box has. (widgets/FontPickers.cpp)

    static void SetupStandardFontsComboBox(QComboBox* combo);

    /// The families installed, as the PDF library names them; none when it cannot be loaded.
    static void SetupSystemFontsComboBox(QComboBox* combo);

    /// The dash pattern of a border `width` points wide, lengths of dashes and gaps in turn, for a
    /// row of the line-style picker; "invalid" for a solid line and where there is no row.
    /// (geometry/BorderDash.cpp)
    static QString GetBorderDash(int style, double width);

    // Texts. (widgets/TextItems.cpp)

    /// The height of the text when it is wrapped at `width`, both in pixels.
    static double GetTextItemHeight(const QFont& font, const QString& html, double width);

    /// Adds to the icon a picture of the text in a rectangle of `width` by `height` pixels, scaled
    /// to fit 128 by 128. Without a whole pixel there is no picture.
    static void GenerateTextItemIcon(double width, double height, const QString& text, QIcon* icon);

    // Icons and help that the host supplies. The host names the widgets for help once and owns
    // them; until it does so, and after it has named null, nothing is shown. (widgets/HelpPane.cpp)

    /// The icon of a tool by the name of its file; without a picture when there is no such file.
    static QIcon GetIconForTool(QString fileName);

    static void SetTargetLabels(QLabel* navBarLabel, QTextEdit* infoLabel);

    static void SetCurrentSection(QString title);

    /// Shows a help page by the name of its file, nothing when there is no such page. It is read
    /// in the character set that it declares, else as ISO 8859-1.
    static void SetHelp(QString fileName);

    static void SetHelpHtml(QString html);

    /// Where the section's title and the help are shown.
    static QLabel* mNavBarLabel;
    static QTextEdit* mInfoLabel;
};

/// The keywords of the commands for splitting, in the order of their indices.
extern VANTORA_SHARED const QList<QString> gCommandsList;
