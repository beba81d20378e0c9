#include "VantoraHost/desktop/documents/FolderSearch.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QDir>
#include <QtCore/QMetaType>

namespace vantora::desktop {

namespace {

constexpr std::size_t groupSize = 500;

} // namespace

FolderSearch::FolderSearch(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<std::vector<Input>>("std::vector<vantora::Input>");
}

FolderSearch::~FolderSearch()
{
    stop();
}

void FolderSearch::search(const QStringList& folders)
{
    waiting_ << folders;
    if (!background_.isBusy()) {
        startNext();
    }
}

void FolderSearch::stop()
{
    waiting_.clear();
    background_.stop();
}

void FolderSearch::startNext()
{
    if (waiting_.isEmpty()) {
        return;
    }
    const QString folder = waiting_.takeFirst();
    background_.start([this, folder](const std::atomic<bool>& stopped) {
        QStringList unreadable;
        std::vector<Input> group;
        const QDir searched(folder);
        const QString absolute = searched.absolutePath();
        const auto placeAt = static_cast<std::size_t>(systemPath(absolute).size() +
                                                      (absolute.endsWith('/') ? 0 : 1));
        CActionUtils::SearchFilesInDir(
            searched, {"pdf"}, true, unreadable, [&](const QString& file) {
                group.push_back({systemPath(file), placeAt});
                if (group.size() == groupSize) {
                    emit found(group); // in another thread, so it is queued
                    group.clear();
                }
                return !stopped;
            });
        return [this, group, unreadable] {
            if (!group.empty()) {
                emit found(group);
            }
            if (waiting_.isEmpty()) {
                emit finished(unreadable);
            }
            startNext();
        };
    });
}

} // namespace vantora::desktop
