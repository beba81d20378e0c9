#pragma once

#include "VantoraHost/core/pictures/PicturePool.h"
#include "VantoraHost/desktop/pages/Marks.h"

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <memory>
#include <vector>

namespace vantora::desktop {

/// Who asks for pictures; the first is served first.
enum class PictureAsker { LargePage, Grid, Report };

/// What is asked for: the document's page count, or something of its pages.
struct PageWish {
    DocumentId document = 0;
    std::optional<PictureTask> task; ///< none for the page count
};

/// Pictures of pages, made in confined processes (core/pictures) and asked for and received
/// without waiting: a thread of its own minds the processes, and ends with this object.
class Pictures : public QObject {
    Q_OBJECT

public:
    explicit Pictures(PictureSettings settings, QObject* parent = nullptr);
    ~Pictures() override;

    /// Names a document's file, or says that it is another from now on. The password may be empty.
    void open(DocumentId document, const QString& path, const QString& password);

    /// Forgets a document; nothing comes of it any more.
    void close(DocumentId document);

    /// Takes the place of everything that this asker has asked for; the first comes first.
    void wish(PictureAsker asker, std::vector<PageWish> wishes);

signals:
    void pagesKnown(vantora::desktop::DocumentId document, int pages);
    /// Sizes and labels of pages from `first` on.
    void factsKnown(vantora::desktop::DocumentId document, int first,
                    const std::vector<vantora::ShownPage>& pages);
    void made(vantora::desktop::DocumentId document, int page, int side, const QImage& picture);
    /// There is no picture; `page` is 0 when the document can't be opened. The reason is a
    /// sentence that may follow a name.
    void failed(vantora::desktop::DocumentId document, int page, const QString& reason);

private:
    /// What comes to this object's thread.
    struct Arrival {
        PictureAnswer answer;
        QImage picture;
    };
    class Thread;

    void sendWishes();
    void arrive(const Arrival& arrival);

    QHash<DocumentId, PicturedDocument> open_; ///< a file that is another gets another number
    QHash<PicturedDocument, DocumentId> documents_;
    QMap<PictureAsker, std::vector<PageWish>> wishes_;
    PicturedDocument last_ = 0;
    std::unique_ptr<Thread> thread_;
};

} // namespace vantora::desktop
