#include "VantoraHost/desktop/run/ReportPictures.h"

#include "VantoraHost/core/outputs/Backup.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QBuffer>

#include <algorithm>
#include <filesystem>
#include <limits>

namespace vantora::desktop {

namespace {

QByteArray jpegOf(const QImage& picture)
{
    constexpr int quality = 80;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPG", quality);
    return bytes;
}

} // namespace

ReportOriginal originalOf(const DocumentReport& report)
{
    ReportOriginal original;
    original.state = {report.bytesBefore.value_or(0), report.inputModified};
    original.pages = report.pagesRemoved.value_or(std::vector<int>());
    // What was done in place was done to the file that a link leads to.
    std::error_code failed;
    const auto file = std::filesystem::canonical(report.input, failed);
    const std::string input = failed ? report.input : file.native();
    for (const std::string& path : {input, backupOf(input)}) {
        if (original.path.empty() && isStill(stateOf(path), original.state)) {
            original.path = path;
        }
    }
    return original;
}

ReportPictures::ReportPictures(Pictures& pictures, QObject* parent)
    : QObject(parent), pictures_(pictures), last_(std::numeric_limits<DocumentId>::max() / 2)
{
    connect(&pictures_, &Pictures::made, this,
            [this](DocumentId document, int page, int /*side*/, const QImage& picture) {
                if (places_.contains(document)) {
                    take(document, page, jpegOf(picture));
                }
            });
    connect(&pictures_, &Pictures::failed, this, &ReportPictures::refuse);
}

void ReportPictures::make(const std::vector<ReportOriginal>& originals)
{
    for (auto place = places_.cbegin(); place != places_.cend(); ++place) {
        pictures_.close(place.key());
    }
    places_.clear();
    waiting_.clear();
    made_.assign(originals.size(), {});
    for (std::size_t i = 0; i < originals.size() && waiting_.size() < most; ++i) {
        const ReportOriginal& original = originals[i];
        if (original.path.empty() || original.pages.empty()) {
            continue;
        }
        const DocumentId id = ++last_;
        places_.insert(id, i);
        pictures_.open(id, qtPath(original.path), original.password);
        const std::size_t count =
            std::min({original.pages.size(), mostOfADocument, most - waiting_.size()});
        for (std::size_t page = 0; page < count; ++page) {
            waiting_.push_back({id, PictureTask{original.pages[page], side, 0}});
        }
    }
    total_ = waiting_.size();
    wish();
    if (waiting_.empty()) {
        end();
    }
}

void ReportPictures::wish()
{
    pictures_.wish(PictureAsker::Report, waiting_);
}

void ReportPictures::take(DocumentId document, int page, const QByteArray& jpeg)
{
    const auto done = std::find_if(waiting_.begin(), waiting_.end(), [&](const PageWish& wish) {
        return wish.document == document && wish.task->page == page;
    });
    if (done == waiting_.end()) {
        return;
    }
    waiting_.erase(done);
    made_[places_[document]].pictures.push_back({page, jpeg});
    wish();
    emit progressed();
    if (waiting_.empty()) {
        end();
    }
}

// A document that one page of can't be had is not asked for others: each might take as long to
// fail.
void ReportPictures::refuse(DocumentId document, int /*page*/, const QString& reason)
{
    const auto place = places_.constFind(document);
    if (place == places_.constEnd() || waiting_.empty()) {
        return;
    }
    made_[*place].why = reason;
    waiting_.erase(std::remove_if(waiting_.begin(), waiting_.end(),
                                  [&](const PageWish& wish) { return wish.document == document; }),
                   waiting_.end());
    wish();
    emit progressed();
    if (waiting_.empty()) {
        end();
    }
}

void ReportPictures::end()
{
    for (auto place = places_.cbegin(); place != places_.cend(); ++place) {
        pictures_.close(place.key());
    }
    places_.clear();
    for (Made& made : made_) {
        std::sort(made.pictures.begin(), made.pictures.end(),
                  [](const auto& one, const auto& other) { return one.page < other.page; });
    }
    emit finished(made_);
}

} // namespace vantora::desktop
