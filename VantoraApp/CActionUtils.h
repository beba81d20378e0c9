#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// Operations that all actions share. All are static and keep no state; each section has a source
/// file of its own.
class CActionUtils {
public:
    // Page ranges: texts such as 1,4-6,9-15,21. Pages are counted from 1. (PageRanges.cpp)

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

    // The folders of CUtils under the names that actions know them by. (FolderTree.cpp)

    static QString GetSettingsFolder();
    static QString GetCollectionsFolder();
    static QString GetSequenceFolder();

    /// CUtils::GetAppDataToolsFolder.
    static QString GetVantoraAppDataFolder();
};
