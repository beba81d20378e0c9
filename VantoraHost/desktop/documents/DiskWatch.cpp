#include "VantoraHost/desktop/documents/DiskWatch.h"

namespace vantora::desktop {

namespace {

constexpr int interval = 2000; // milliseconds

} // namespace

std::vector<DocumentId> changedAmong(const std::vector<WatchedFile>& files)
{
    std::vector<DocumentId> changed;
    for (const WatchedFile& file : files) {
        if (!isStill(stateOf(file.path), file.seen)) {
            changed.push_back(file.id);
        }
    }
    return changed;
}

DiskWatch::DiskWatch(std::function<std::vector<WatchedFile>()> files, QObject* parent)
    : QObject(parent), files_(std::move(files))
{
    connect(&timer_, &QTimer::timeout, this, &DiskWatch::look);
    timer_.start(interval);
}

void DiskWatch::look()
{
    if (background_.isBusy()) {
        return;
    }
    std::vector<WatchedFile> files = files_();
    if (files.empty()) {
        return;
    }
    background_.start([this, files = std::move(files)](const std::atomic<bool>&) {
        return [this, ids = changedAmong(files)] {
            if (!ids.empty()) {
                emit changed(ids);
            }
        };
    });
}

} // namespace vantora::desktop
