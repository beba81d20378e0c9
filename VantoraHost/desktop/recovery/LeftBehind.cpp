#include "VantoraHost/desktop/recovery/LeftBehind.h"

#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <memory>

namespace vantora::desktop {

LeftBehind::LeftBehind(WorkStore store, std::function<std::string(const std::string&)> reportNamed,
                       QObject* parent)
    : QObject(parent), store_(std::move(store)), reportNamed_(std::move(reportNamed))
{
}

void LeftBehind::look()
{
    background_.start([this](const std::atomic<bool>& /*stopped*/) {
        auto files = std::make_shared<std::vector<WorkFile>>(store_.leftBehind());
        return [this, files] {
            for (WorkFile& file : *files) {
                files_.push_back(std::move(file));
            }
            next();
        };
    });
}

void LeftBehind::next()
{
    if (files_.empty()) {
        return;
    }
    background_.start([this, file = &files_.front()](const std::atomic<bool>& /*stopped*/) {
        auto work = file->read().and_then(
            [file](const std::string& text) { return keptWorkOf(text, file->path()); });
        return [this, work = std::move(work)] {
            if (work) {
                work_ = *work;
                emit found();
                return;
            }
            emit refused(
                tr("What was kept of a window can't be brought back: %1: %2.",
                   "a file and what is wrong with it")
                    .arg(shownText(work.error().file), shownSentence(work.error().sentence)));
            discard();
        };
    });
}

void LeftBehind::take()
{
    if (files_.empty() || background_.isBusy()) {
        return;
    }
    background_.start([this, work = work_, report = reportNamed_(work_.report)](
                          const std::atomic<bool>& stopped) mutable {
        auto all = std::make_shared<Recovered>(recovered(std::move(work), report, stopped));
        return [this, all] {
            WorkFile file = std::move(files_.front());
            files_.pop_front();
            work_ = {};
            emit taken(*all);
            file.remove();
        };
    });
}

void LeftBehind::discard()
{
    if (files_.empty() || background_.isBusy()) {
        return;
    }
    files_.front().remove();
    files_.pop_front();
    work_ = {};
    next();
}

} // namespace vantora::desktop
