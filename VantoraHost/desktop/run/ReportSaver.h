#pragma once

#include "VantoraHost/core/outputs/TextFile.h"
#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/run/ReportPage.h"
#include "VantoraHost/desktop/run/ReportPictures.h"
#include "VantoraHost/desktop/run/ResultList.h"

#include <QtCore/QObject>

#include <functional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// Saves what became of a run as a file that only the user may read, whole or not at all; one at a
/// time.
class ReportSaver : public QObject {
    Q_OBJECT

public:
    /// `passwordFor` says what opens the document of a path, which may be empty. All outlive this.
    ReportSaver(const ResultList& results, Pictures& pictures,
                std::function<QString(const std::string& input)> passwordFor,
                QObject* parent = nullptr);

    /// As a web page with pictures of the pages that went, made from the originals as they were.
    void saveHtml(const QString& path, ExistingText existing, const QString& title);

    /// As lines of JSON, which `vantora undo` and `vantora run --resume` take: the report of the
    /// run, or where there is none what is known of the results.
    void saveJson(const QString& path, ExistingText existing, const std::string& report);

    /// Whether a web page is being made.
    bool isBusy() const { return isBusy_; }

signals:
    /// How far it is, or what became of it, as a sentence.
    void noted(const QString& sentence);

private:
    void write(std::vector<ReportPictures::Made> made);
    void say(const Outcome& written, const std::string& path);

    const ResultList& results_;
    const std::function<QString(const std::string&)> passwordFor_;
    ReportPictures pictures_;
    std::string path_;
    ExistingText existing_ = ExistingText::Refuse;
    ReportContent content_;
    std::vector<ReportOriginal> originals_;
    bool isBusy_ = false;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
