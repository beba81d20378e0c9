#include "VantoraHost/desktop/choosing/Chooser.h"

#include "VantoraHost/core/documents/PageSurvey.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QLocale>
#include <QtWidgets/QUndoStack>

#include <algorithm>
#include <tuple>

namespace vantora::desktop {

namespace {

// After the last keystroke, and after documents are added or read; in milliseconds.
constexpr int lookDelay = 250;

// Nobody sees more than that, and thousands of documents may be judged in a second.
constexpr int tellDelay = 100;

// Pages whose reasons are kept; of others it is only known that they go.
constexpr std::size_t mostReasons = 200'000;

} // namespace

Chooser::Chooser(DocumentList& list, Marks& marks, QUndoStack& undo, std::filesystem::path program,
                 QObject* parent)
    : QObject(parent), list_(list), marks_(marks), undo_(undo), reader_(std::move(program), {})
{
    for (const auto& [timer, delay] : {std::pair(&looking_, lookDelay), {&telling_, tellDelay}}) {
        timer->setSingleShot(true);
        timer->setInterval(delay);
    }
    connect(&looking_, &QTimer::timeout, this, &Chooser::look);
    connect(&telling_, &QTimer::timeout, this, &Chooser::progressed);
    connect(&reader_, &DocumentReader::documentsRead, this, &Chooser::take);
    connect(&undo_, &QUndoStack::indexChanged, this, &Chooser::heedUndo);
    connect(&list_, &DocumentList::changed, this, [this] {
        if (isOn() && !isStopped_ && !looking_.isActive()) {
            looking_.start();
        }
    });
}

Chooser::~Chooser()
{
    disconnect(&undo_, nullptr, this, nullptr);
}

void Chooser::choose(const ChoiceTexts& texts)
{
    if (texts == texts_ && !isStopped_) {
        return;
    }
    endLooking();
    judged_.clear();
    reasons_ = 0;
    texts_ = texts;
    isStopped_ = false;
    if (undo_.index() != undo_.count() || !isOurStep(undo_.index() - 1)) {
        ++series_;
        before_.clear();
    }
    if (isOn()) {
        looking_.start();
    } else {
        takeBackWhatIsNotFound();
    }
    tellSoon();
}

void Chooser::stop()
{
    if (isOn() && !isStopped_) {
        endLooking();
        isStopped_ = true;
        takeBackWhatIsNotFound();
        tellSoon();
    }
}

void Chooser::goOn()
{
    isStopped_ = false;
    for (auto& [id, judged] : judged_) {
        judged.version = judged.isFailed ? 0 : judged.version;
    }
    if (isOn()) {
        looking_.start();
    }
    tellSoon();
}

bool Chooser::isBusy() const
{
    return looking_.isActive() || reader_.left() > 0;
}

void Chooser::endLooking()
{
    looking_.stop();
    reader_.stop();
    for (auto one = judged_.begin(); one != judged_.end();) {
        one = one->second.isAnswered ? std::next(one) : judged_.erase(one);
    }
}

void Chooser::look()
{
    std::vector<ReadingTask> tasks;
    for (const Document& document : list_.documents()) {
        Judged& judged = judged_[document.id];
        if (document.isUsable() && judged.version != document.version) {
            reasons_ -= judged.pages.size();
            judged = {};
            judged.version = document.version;
            tasks.push_back({document.id, document.input.path, document.password});
        }
    }
    // Those with one password are looked at together.
    std::stable_sort(tasks.begin(), tasks.end(),
                     [this](const ReadingTask& one, const ReadingTask& other) {
                         return std::tuple(one.id != current_, one.password) <
                                std::tuple(other.id != current_, other.password);
                     });
    reader_.setCommand(QStringList("pages") + texts_.arguments());
    reader_.read(std::move(tasks));
    if (!isBusy()) {
        takeBackWhatIsNotFound();
    }
    tellSoon();
}

void Chooser::take(const std::vector<ReadDocument>& documents)
{
    MarkDocuments::Changes marks;
    for (const ReadDocument& read : documents) {
        const Document* const document = list_.find(read.task.id);
        Judged& judged = judged_[read.task.id];
        if (document == nullptr || document->version != judged.version) {
            judged.version = 0; // it is another one meanwhile
        } else if (auto found = foundIn(read.found, judged)) {
            marks.insert(document->id, std::move(found));
        }
    }
    mark(marks);
    if (!isBusy()) {
        takeBackWhatIsNotFound();
    }
    tellSoon();
}

// The marks that a document gets; none when it can't be judged.
std::optional<RangeMarks> Chooser::foundIn(const Result<std::string>& line, Judged& judged)
{
    auto survey = line.and_then([](const std::string& text) { return pageSurveyOf(text); });
    judged.isAnswered = true;
    judged.isFailed = !survey;
    judged.count = 0;
    reasons_ -= judged.pages.size(); // it may be answered a second time
    judged.pages.clear();
    if (!survey) {
        judged.sentence = shownSentence(survey.error().sentence);
        return std::nullopt;
    }
    judged.sentence =
        survey->warnings.empty() ? QString() : shownSentence(survey->warnings.front());
    judged.count = survey->chosen.size();
    const QString range = QString::fromStdString(rangeTextOf(survey->chosen));
    if (reasons_ + judged.count <= mostReasons) {
        reasons_ += judged.count;
        judged.pages = std::move(survey->chosen);
    }
    return Marks::ofText(range, {});
}

void Chooser::takeBackWhatIsNotFound()
{
    MarkDocuments::Changes marks;
    for (auto before = before_.cbegin(); before != before_.cend(); ++before) {
        const auto judged = judged_.find(before.key());
        if (judged == judged_.end() || !judged->second.isAnswered || judged->second.isFailed) {
            marks.insert(before.key(), before.value());
        }
    }
    mark(marks);
}

void Chooser::mark(const MarkDocuments::Changes& marks)
{
    MarkDocuments::Changes others;
    for (auto one = marks.cbegin(); one != marks.cend(); ++one) {
        const auto now = marks_.at(one.key());
        if (now != one.value()) {
            others.insert(one.key(), one.value());
            if (!before_.contains(one.key())) {
                before_.insert(one.key(), now);
            }
        }
    }
    if (!others.isEmpty()) {
        isMarking_ = true;
        undo_.push(new MarkDocuments(marks_, std::move(others), tr("Choose Pages"), series_));
        isMarking_ = false;
        index_ = undo_.index();
    }
}

bool Chooser::isOurStep(int index) const
{
    const auto* const step = dynamic_cast<const MarkDocuments*>(undo_.command(index));
    return step != nullptr && step->series() == series_;
}

// Who undoes what was found wants no more of it.
void Chooser::heedUndo(int index)
{
    if (isMarking_) {
        return;
    }
    for (int undone = index; undone < index_ && isOn() && !isStopped_; ++undone) {
        if (isOurStep(undone)) {
            endLooking();
            isStopped_ = true;
            judged_.clear();
            reasons_ = 0;
            tellSoon();
        }
    }
    index_ = index;
}

void Chooser::tellSoon()
{
    if (!telling_.isActive()) {
        telling_.start();
    }
}

ChoosingProgress Chooser::progress() const
{
    ChoosingProgress progress;
    for (const Document& document : list_.documents()) {
        const auto judged = judged_.find(document.id);
        progress.total += document.isUsable() ? 1 : 0;
        if (document.isUsable() && judged != judged_.end() && judged->second.isAnswered) {
            ++progress.judged;
            progress.pages += judged->second.count;
            progress.found += judged->second.count > 0 ? 1 : 0;
        }
    }
    return progress;
}

std::vector<ChoosingRemark> Chooser::remarks() const
{
    std::vector<ChoosingRemark> remarks;
    for (const Document& document : list_.documents()) {
        const auto judged = judged_.find(document.id);
        if (judged != judged_.end() && !judged->second.sentence.isEmpty()) {
            remarks.push_back({document.id, judged->second.isFailed, judged->second.sentence});
        }
    }
    return remarks;
}

QString Chooser::reasonOf(DocumentId id, int page) const
{
    const auto judged = judged_.find(id);
    if (judged == judged_.end()) {
        return {};
    }
    const auto& pages = judged->second.pages;
    const auto found =
        std::lower_bound(pages.begin(), pages.end(), page,
                         [](const ChosenPage& one, int number) { return one.page < number; });
    if (found == pages.end() || found->page != page || found->reason.empty()) {
        return {};
    }
    if (!found->figure) {
        return inWords(found->reason);
    }
    return found->reason.rfind("duplicate", 0) == 0
               ? tr("same as page %1").arg(*found->figure)
               : tr("%1: %2 % of it differs from the paper", "a choice and a share")
                     .arg(inWords(found->reason), QLocale().toString(*found->figure, 'g', 2));
}

} // namespace vantora::desktop
