#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <string>
#include <vector>

namespace vantora::desktop {

/// A page that went, as a report shows it.
struct ReportPicture {
    int page = 0;    ///< in the original
    QByteArray jpeg; ///< empty where there is no picture
};

/// What a report says of a document, in texts that people read. They may hold anything.
struct ReportRow {
    QString name;
    QString path;
    QString outcome;
    bool isGood = true;
    QString pages;
    QString size;
    QString output;
    std::size_t removed = 0;             ///< pages
    std::vector<ReportPicture> pictures; ///< of the first ones
    QString whyNoPicture;                ///< where there is none or not all; empty for no reason
};

/// A run as a report shows it.
struct ReportContent {
    QString title;
    QString summary;
    std::vector<ReportRow> rows;
};

/// The report as one HTML page that stands alone: it loads nothing and runs nothing, whatever names
/// and reasons hold; light or dark as the reader's system is, and fit to be printed.
std::string reportHtml(const ReportContent& content);

} // namespace vantora::desktop
