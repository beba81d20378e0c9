#include "VantoraHost/desktop/recovery/WorkKeeper.h"

#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <optional>

namespace vantora::desktop {

namespace {

// After the first change, in milliseconds: what is lost by a power cut took no longer to do.
constexpr int delay = 1000;

} // namespace

/// What the file holds.
struct WorkKeeper::Kept {
    std::optional<WorkFile> file;
    std::string text; ///< empty for nothing

    /// Puts work into it; returns why it can't.
    std::optional<Error> put(const WorkStore& store, const KeptWork& work)
    {
        if (!work.isWorthKeeping()) {
            if (file && !text.empty()) {
                file->clear();
                text.clear();
            }
            return std::nullopt;
        }
        std::string now = toJson(work);
        if (now == text) {
            return std::nullopt;
        }
        if (now.size() > mostKept) {
            return Error{Reason::OutOfMemory, {}, "the list is too long"};
        }
        if (!file) {
            auto begun = store.begin();
            if (!begun) {
                return begun.error();
            }
            file = std::move(*begun);
        }
        if (const Outcome written = file->write(now); !written) {
            return written.error();
        }
        text = std::move(now);
        return std::nullopt;
    }
};

WorkKeeper::WorkKeeper(WorkStore store, std::function<KeptWork()> work, QObject* parent)
    : QObject(parent), store_(std::move(store)), work_(std::move(work)),
      kept_(std::make_shared<Kept>())
{
    timer_.setSingleShot(true);
    timer_.setInterval(delay);
    connect(&timer_, &QTimer::timeout, this, &WorkKeeper::keep);
}

void WorkKeeper::changed()
{
    if (!timer_.isActive() && !hasEnded_) {
        timer_.start();
    }
}

void WorkKeeper::keep()
{
    if (background_.isBusy()) {
        changed(); // a slow disk is not waited for
        return;
    }
    background_.start([this, kept = kept_, work = work_()](const std::atomic<bool>& /*stopped*/) {
        return [this, fault = kept->put(store_, work)] { say(fault); };
    });
}

void WorkKeeper::keepNow()
{
    if (hasEnded_) {
        return;
    }
    timer_.stop();
    background_.finish();
    say(kept_->put(store_, work_()));
}

void WorkKeeper::end()
{
    hasEnded_ = true;
    timer_.stop();
    background_.finish();
    if (kept_->file) {
        kept_->file->remove();
        kept_->file.reset();
    }
}

void WorkKeeper::say(const std::optional<Error>& fault)
{
    if (fault && !hasFailed_) {
        hasFailed_ = true;
        emit failed(tr("The list can't be brought back after a crash: %1.", "a reason")
                        .arg(shownSentence(fault->sentence)));
    }
}

} // namespace vantora::desktop
