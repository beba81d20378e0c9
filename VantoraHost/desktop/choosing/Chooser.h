#pragma once

#include "VantoraHost/core/choices/ChosenPages.h"
#include "VantoraHost/desktop/choosing/ChoiceTexts.h"
#include "VantoraHost/desktop/documents/DocumentList.h"
#include "VantoraHost/desktop/documents/DocumentReader.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"

#include <QtCore/QTimer>

#include <filesystem>
#include <map>
#include <optional>
#include <vector>

class QUndoStack;

namespace vantora::desktop {

/// How far choosing is.
struct ChoosingProgress {
    std::size_t judged = 0; ///< documents, with those that can't be
    std::size_t total = 0;  ///< documents
    std::size_t pages = 0;  ///< that are found
    std::size_t found = 0;  ///< documents with some
};

/// What is to be said of a document that was looked at.
struct ChoosingRemark {
    DocumentId id = 0;
    bool isFailure = false; ///< else only a part of it couldn't be told
    QString sentence;
};

/// Finds the pages that choices name in all listed documents, and marks them, "only here". The
/// command `pages` looks at each document in a confined process; here nothing is opened. What
/// one setting of choices after the other marks is undone as one step, unless something else was
/// marked in between. Documents that can't be judged get back the marks that they had before.
class Chooser : public QObject {
    Q_OBJECT

public:
    /// `program` has the command. All others outlive the chooser.
    Chooser(DocumentList& list, Marks& marks, QUndoStack& undo, std::filesystem::path program,
            QObject* parent = nullptr);
    ~Chooser() override;

    /// Looks for pages of other choices from now on; for none, once there are none. Then marks that
    /// were made for those of before go. Documents that are added or read anew later are looked at,
    /// too.
    void choose(const ChoiceTexts& texts);

    /// The document that is looked at first.
    void setCurrent(std::optional<DocumentId> id) { current_ = id; }

    /// Ends looking, until goOn() or other choices.
    void stop();

    /// Looks at what isn't judged yet, and at what couldn't be.
    void goOn();

    /// Whether documents are being looked at, or are going to be.
    bool isBusy() const;

    /// Whether there are documents that nobody is going to look at.
    bool isStopped() const { return isStopped_; }

    /// Whether there are choices.
    bool isOn() const { return !texts_.isEmpty(); }

    ChoosingProgress progress() const;

    /// In the order of the list.
    std::vector<ChoosingRemark> remarks() const;

    /// Why a page goes, in words; empty where no choice says so.
    QString reasonOf(DocumentId id, int page) const;

signals:
    void progressed();

private:
    /// What is known of a document.
    struct Judged {
        quint64 version = 0; ///< of the document that is asked about
        bool isAnswered = false;
        bool isFailed = false;
        QString sentence;              ///< why it failed, or what couldn't be told
        std::size_t count = 0;         ///< of pages
        std::vector<ChosenPage> pages; ///< with their reasons, as far as there is room for these
    };

    void lookSoon();
    void look();
    void take(const std::vector<ReadDocument>& documents);
    std::optional<RangeMarks> foundIn(const Result<std::string>& line, Judged& judged);
    void endLooking();
    void takeBackWhatIsNotFound();
    void mark(const MarkDocuments::Changes& marks);
    bool isOurStep(int index) const;
    void heedUndo(int index);
    void tellSoon();

    DocumentList& list_;
    Marks& marks_;
    QUndoStack& undo_;
    DocumentReader reader_;
    ChoiceTexts texts_;
    std::optional<DocumentId> current_;
    std::map<DocumentId, Judged> judged_; ///< by the choices that are set
    std::size_t reasons_ = 0;             ///< that are kept
    MarkDocuments::Changes before_;       ///< the marks before those that one step has made
    QTimer looking_;
    QTimer telling_;
    int series_ = 0; ///< of marks that are one step
    int index_ = 0;  ///< of the stack
    bool isMarking_ = false;
    bool isStopped_ = false;
};

} // namespace vantora::desktop
