#pragma once

#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/reports/DocumentReport.h"
#include "VantoraHost/desktop/pages/Pictures.h"
#include "VantoraHost/desktop/run/ReportPage.h"

#include <QtCore/QHash>
#include <QtCore/QObject>

#include <optional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// An original whose pages are to be shown in a report.
struct ReportOriginal {
    std::string path; ///< of the original as it was, or of its backup; empty where it is gone
    FileState state;  ///< that it had
    QString password; ///< empty for none
    std::vector<int> pages;
};

/// The original of a document that a run has done, as it was: the input or, where that was
/// replaced, its backup. Without a path where neither is there any more. Looks at the disk.
ReportOriginal originalOf(const DocumentReport& report);

/// Makes the pictures of a report in the confined processes of the window's own pictures, behind
/// all that can be seen.
class ReportPictures : public QObject {
    Q_OBJECT

public:
    /// The most pictures of a report and of one document of it, and pixels of their longer side.
    static constexpr std::size_t most = 600;
    static constexpr std::size_t mostOfADocument = 24;
    static constexpr int side = 200;

    /// The pictures outlive this.
    explicit ReportPictures(Pictures& pictures, QObject* parent = nullptr);

    /// What became of an original's pages.
    struct Made {
        std::vector<ReportPicture> pictures;
        QString why; ///< there are not all of them; empty for no reason
    };

    /// Begins, and gives up what was begun before. Originals without a path have no pictures.
    void make(const std::vector<ReportOriginal>& originals);

    std::size_t done() const { return total_ - waiting_.size(); }
    std::size_t total() const { return total_; }

signals:
    void progressed();
    /// One for each original.
    void finished(const std::vector<vantora::desktop::ReportPictures::Made>& made);

private:
    void wish();
    void take(DocumentId document, int page, const QByteArray& jpeg);
    void refuse(DocumentId document, int page, const QString& reason);
    void end();

    Pictures& pictures_;
    QHash<DocumentId, std::size_t> places_; ///< of the originals
    std::vector<Made> made_;
    std::vector<PageWish> waiting_;
    std::size_t total_ = 0;
    DocumentId last_; ///< numbers of its own, since a listed document may be another by now
};

} // namespace vantora::desktop
