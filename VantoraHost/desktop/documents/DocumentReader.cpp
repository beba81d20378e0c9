#include "VantoraHost/desktop/documents/DocumentReader.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QProcess>

#include <algorithm>

namespace vantora::desktop {

namespace {

// A process starts in hardly any time, and one that is asked about many answers in their order.
constexpr std::size_t mostAtATime = 200;

} // namespace

DocumentReader::DocumentReader(std::filesystem::path program, QStringList command, QObject* parent)
    : QObject(parent), program_(std::move(program)), command_(std::move(command))
{
}

DocumentReader::~DocumentReader()
{
    stop();
}

void DocumentReader::read(std::vector<ReadingTask> tasks)
{
    std::move(tasks.begin(), tasks.end(), std::back_inserter(waiting_));
    startNext();
}

void DocumentReader::stop()
{
    waiting_.clear();
    current_.clear();
    answered_ = 0;
    received_.clear();
    if (process_) {
        process_->disconnect(this);
        process_->kill();
        process_->waitForFinished();
        process_.reset();
    }
}

void DocumentReader::startNext()
{
    if (process_ || waiting_.empty()) {
        return;
    }
    const std::string password = waiting_.front().password;
    QStringList arguments = command_ + QStringList({"--json"});
    if (!password.empty()) {
        arguments << "--password-file"
                  << "/dev/stdin";
    }
    arguments << "--";
    while (!waiting_.empty() && waiting_.front().password == password &&
           current_.size() < mostAtATime) {
        ReadingTask task = std::move(waiting_.front());
        waiting_.pop_front();
        arguments << qtPath(task.path);
        auto state = stateOf(task.path);
        current_.push_back({std::move(task), std::move(state), std::string()});
    }
    process_ = std::make_unique<QProcess>();
    // Each document's sentence is in the answers, too.
    process_->setStandardErrorFile(QProcess::nullDevice());
    connect(process_.get(), &QProcess::readyReadStandardOutput, this, &DocumentReader::takeAnswers);
    connect(process_.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &DocumentReader::finish);
    connect(process_.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            finish();
        }
    });
    process_->start(qtPath(program_), arguments);
    process_->write(QByteArray::fromStdString(password));
    process_->closeWriteChannel();
}

std::vector<ReadDocument> DocumentReader::answersIn(const QByteArray& lines)
{
    std::vector<ReadDocument> answers;
    int begin = 0;
    for (int end = 0; (end = lines.indexOf('\n', begin)) >= 0; begin = end + 1) {
        if (answered_ < current_.size()) {
            ReadDocument& answer = current_[answered_++];
            answer.found =
                std::string(lines.constData() + begin, static_cast<std::size_t>(end - begin));
            answers.push_back(std::move(answer));
        }
    }
    received_ = lines.mid(begin);
    return answers;
}

void DocumentReader::takeAnswers()
{
    const auto answers = answersIn(received_ + process_->readAllStandardOutput());
    if (!answers.empty()) {
        emit documentsRead(answers);
    }
}

void DocumentReader::finish()
{
    takeAnswers();
    std::vector<ReadDocument> lost;
    while (answered_ < current_.size()) {
        ReadDocument& unread = current_[answered_++];
        unread.found = fail(Reason::WorkerFailed, unread.task.path,
                            "the process that reads documents has ended: " +
                                process_->errorString().toStdString());
        lost.push_back(std::move(unread));
    }
    current_.clear();
    answered_ = 0;
    received_.clear();
    process_.release()->deleteLater(); // it is the one that called
    if (!lost.empty()) {
        emit documentsRead(lost);
    }
    startNext();
}

} // namespace vantora::desktop
