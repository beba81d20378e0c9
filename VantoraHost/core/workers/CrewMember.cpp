#include "VantoraHost/core/workers/CrewMember.h"

#include <algorithm>

namespace vantora {

WorkerStage stageAfter(WorkerStage stage, WorkerEvent event)
{
    using Stage = WorkerStage;
    const bool ready = wasReady(stage);
    switch (event) {
    case WorkerEvent::SaysReady:
        return stage == Stage::Starting      ? Stage::Fresh
               : stage == Stage::ClosedEarly ? Stage::Closed
               : stage == Stage::EndedEarly  ? Stage::Ended
                                             : stage;
    case WorkerEvent::IsGivenDocuments:
        return stage == Stage::Fresh ? Stage::Used : stage;
    case WorkerEvent::GetsNoMore:
        return stage == Stage::Starting ? Stage::ClosedEarly
               : isOpen(stage)          ? Stage::Closed
                                        : stage;
    case WorkerEvent::SaysEnd:
        return ready ? Stage::Ended : Stage::EndedEarly;
    case WorkerEvent::SaysEndAsked:
        return ready ? Stage::EndedAsked : Stage::EndedEarly;
    }
    return stage;
}

bool wasReady(WorkerStage stage)
{
    return stage != WorkerStage::Starting && stage != WorkerStage::ClosedEarly &&
           stage != WorkerStage::EndedEarly;
}

bool isOpen(WorkerStage stage)
{
    return stage == WorkerStage::Fresh || stage == WorkerStage::Used;
}

bool hasSaidEnd(WorkerStage stage)
{
    return stage == WorkerStage::EndedEarly || stage == WorkerStage::Ended ||
           stage == WorkerStage::EndedAsked;
}

bool CrewMember::isAt(std::size_t document) const
{
    return !documents.empty() && documents.front() == document;
}

void CrewMember::give(const std::vector<std::size_t>& group)
{
    ahead = isBusy() ? group.size() : 0;
    documents.insert(documents.end(), group.begin(), group.end());
}

void CrewMember::noteEndOfGroup()
{
    if (documents.size() <= ahead && written.empty()) {
        ahead = 0;
    }
}

std::optional<std::size_t> CrewMember::current() const
{
    if (documents.size() > ahead) {
        return documents.front();
    }
    return written.empty() ? std::nullopt : std::optional(written.begin()->first);
}

std::vector<std::size_t> CrewMember::lost() const
{
    std::vector<std::size_t> lost(documents.begin(), documents.end());
    for (const auto& [document, output] : written) {
        lost.push_back(document);
    }
    std::sort(lost.begin(), lost.end());
    return lost;
}

void CrewMember::forget(std::size_t document)
{
    written.erase(document);
    documents.erase(std::remove(documents.begin(), documents.end(), document), documents.end());
}

} // namespace vantora
