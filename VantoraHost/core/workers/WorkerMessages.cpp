#include "VantoraHost/core/workers/WorkerMessages.h"

#include "VantoraHost/core/workers/Packing.h"

#include <QtCore/QDataStream>

namespace vantora {

// Which fields of it go over. All of them stand here, so that a new one doesn't compile until
// somebody has decided whether it does.

template <>
struct LastOf<Reason> {
    static constexpr Reason enumerator = Reason::Interrupted;
};

template <>
struct LastOf<DocumentStatus> {
    static constexpr DocumentStatus enumerator = DocumentStatus::Failed;
};

template <>
struct LastOf<IfEmpty> {
    static constexpr IfEmpty enumerator = IfEmpty::Fail;
};

template <>
struct PackedFields<Error> {
    template <class E>
    static auto of(E& error)
    {
        auto& [reason, file, sentence] = error;
        return std::tie(reason, file, sentence);
    }
};

template <>
struct PackedFields<FileIdentity> {
    template <class I>
    static auto of(I& identity)
    {
        auto& [device, inode] = identity;
        return std::tie(device, inode);
    }
};

template <>
struct PackedFields<FileVersion> {
    template <class V>
    static auto of(V& version)
    {
        auto& [device, inode, size, modified] = version;
        return std::tie(device, inode, size, modified);
    }
};

template <>
struct PackedFields<FileAccess> {
    template <class A>
    static auto of(A& access)
    {
        auto& [readable, writable] = access;
        return std::tie(readable, writable);
    }
};

template <>
struct PackedFields<Target> {
    template <class T>
    static auto of(T& target)
    {
        // Workers read the size from the input.
        auto& [name, path, backup, below, root, replaced, inputSize, input, standardOutput, inPlace,
               number] = target;
        return std::tie(name, path, backup, below, root, replaced, input, standardOutput, inPlace,
                        number);
    }
};

template <>
struct PackedFields<WorkerTask> {
    template <class T>
    static auto of(T& task)
    {
        auto& [number, input, target, range] = task;
        return std::tie(number, input, target, range);
    }
};

template <>
struct PackedFields<JudgedDocument> {
    template <class D>
    static auto of(D& document)
    {
        auto& [version, pages, range, unreadable] = document;
        return std::tie(version, pages, range, unreadable);
    }
};

template <>
struct PackedFields<JobSettings> {
    template <class S>
    static auto of(S& settings)
    {
        // Workers are not told of the standard streams, and have their own ways to be cancelled.
        auto& [passwords, dryRun, keepSigned, strict, salvage, ifEmpty, hashInputs, hashOutputs,
               verifier, reportFirst, judged, standardInput, standardInputMode, standardOutput,
               cancelled, savingBegins, verifyingBegins] = settings;
        return std::tie(passwords, dryRun, keepSigned, strict, salvage, ifEmpty, hashInputs,
                        hashOutputs, verifier, reportFirst, judged);
    }
};

template <>
struct PackedFields<StepRequest> {
    template <class S>
    static auto of(S& step)
    {
        auto& [action, options, stored, file] = step; // what is stored goes over for itself
        return std::tie(action, options, file);
    }
};

template <>
struct PackedFields<PageLoss> {
    template <class L>
    static auto of(L& loss)
    {
        auto& [page, what] = loss;
        return std::tie(page, what);
    }
};

template <>
struct PackedFields<verification::Amount> {
    template <class A>
    static auto of(A& amount)
    {
        auto& [before, after] = amount;
        return std::tie(before, after);
    }
};

template <>
struct PackedFields<verification::Amounts> {
    template <class A>
    static auto of(A& amounts)
    {
        auto& [outlineEntries, links, fields, signatures, attachments] = amounts;
        return std::tie(outlineEntries, links, fields, signatures, attachments);
    }
};

template <>
struct PackedFields<verification::LabelledPages> {
    template <class P>
    static auto of(P& pages)
    {
        auto& [first, last, firstLabel, lastLabel] = pages;
        return std::tie(first, last, firstLabel, lastLabel);
    }
};

template <>
struct PackedFields<VerifiedOutput> {
    template <class V>
    static auto of(V& verified)
    {
        auto& [lookedFor, notTold, amounts, labels] = verified;
        return std::tie(lookedFor, notTold, amounts, labels);
    }
};

template <>
struct PackedFields<DocumentReport> {
    template <class R>
    static auto of(R& report)
    {
        auto& [input, output, range, outputExisted, status, inPart, leftBlank, pagesBefore,
               pagesAfter, pagesRemoved, bytesBefore, bytesAfter, inputModified, inputSha256,
               outputSha256, outputModified, warnings, verified, losses, leftToJudge, repairs,
               error, seconds] = report;
        return std::tie(input, output, range, outputExisted, status, inPart, leftBlank, pagesBefore,
                        pagesAfter, pagesRemoved, bytesBefore, bytesAfter, inputModified,
                        inputSha256, outputSha256, outputModified, warnings, verified, losses,
                        leftToJudge, repairs, error, seconds);
    }
};

template <>
struct PackedFields<WorkerRefusal> {
    template <class R>
    static auto of(R& refusal)
    {
        auto& [error] = refusal;
        return std::tie(error);
    }
};

template <>
struct PackedFields<WorkerWritten> {
    template <class W>
    static auto of(W& written)
    {
        auto& [number, report, output] = written;
        return std::tie(number, report, output);
    }
};

template <>
struct PackedFields<WorkerPlaced> {
    template <class P>
    static auto of(P& placed)
    {
        auto& [numbers] = placed;
        return std::tie(numbers);
    }
};

template <>
struct PackedFields<WorkerReport> {
    template <class R>
    static auto of(R& done)
    {
        auto& [number, report] = done;
        return std::tie(number, report);
    }
};

template <>
struct PackedFields<WorkerEnd> {
    template <class E>
    static auto of(E& end)
    {
        auto& [complaint, asked] = end;
        return std::tie(complaint, asked);
    }
};

namespace {

// What comes after the setup.
enum class Order { DoTasks, GiveNames };

} // namespace

template <>
struct LastOf<Order> {
    static constexpr Order enumerator = Order::GiveNames;
};

namespace {

// As the settings class stores a value, which is what the reader of saved options takes; nothing
// for no options.
std::string storedBytes(const PreferencesMap& options)
{
    QByteArray bytes;
    if (!options.isEmpty()) {
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream.setVersion(QDataStream::Qt_4_0);
        stream << QVariant(options);
    }
    return bytes.toStdString();
}

} // namespace

std::string setupMessage(const WorkerSetup& setup)
{
    std::vector<std::string> stored;
    for (const StepRequest& step : setup.steps) {
        stored.push_back(storedBytes(step.stored));
    }
    return packed(workerProtocol, setup.library, setup.actionFolders, setup.steps, stored,
                  setup.job, setup.memoryLimit, setup.wholeRun, setup.files);
}

Result<WorkerSetup> setupOf(std::string_view message, const StoredReader& stored)
{
    WorkerSetup setup;
    std::vector<std::string> storedOptions;
    int version = 0;
    Unpacker unpack(message);
    if (!unpack(version) || version != workerProtocol ||
        !unpack(setup.library, setup.actionFolders, setup.steps, storedOptions, setup.job,
                setup.memoryLimit, setup.wholeRun, setup.files) ||
        !unpack.atEnd() || storedOptions.size() != setup.steps.size()) {
        return fail(Reason::WorkerFailed, {}, "this is no order for a worker of this version");
    }
    for (std::size_t i = 0; i < setup.steps.size(); ++i) {
        if (storedOptions[i].empty()) {
            continue;
        }
        auto read = stored(QByteArray::fromStdString(storedOptions[i]));
        if (!read) {
            return fail(Reason::WorkerFailed, {}, "the options of a step can't be read");
        }
        setup.steps[i].stored = std::move(*read);
    }
    return setup;
}

std::string tasksMessage(const std::vector<WorkerTask>& tasks)
{
    return packed(Order::DoTasks, tasks);
}

std::optional<std::vector<WorkerTask>> tasksOf(std::string_view message)
{
    auto order = unpacked<std::pair<Order, std::vector<WorkerTask>>>(message);
    return order && order->first == Order::DoTasks ? std::optional(std::move(order->second))
                                                   : std::nullopt;
}

std::string namingMessage()
{
    return packed(Order::GiveNames);
}

std::string answerMessage(const WorkerAnswer& answer)
{
    return packed(answer);
}

std::optional<WorkerAnswer> answerOf(std::string_view message)
{
    return unpacked<WorkerAnswer>(message);
}

} // namespace vantora
