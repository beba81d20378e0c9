#include "VantoraHost/desktop/recovery/BringBack.h"

#include "VantoraHost/desktop/documents/DocumentCommands.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QCoreApplication>
#include <QtWidgets/QUndoStack>

namespace vantora::desktop {

namespace {

Result<ListedSteps> stepsOf(const KeptWork& work, const std::vector<InstalledAction>& actions)
{
    std::vector<StepRequest> requests;
    for (const KeptStep& kept : work.steps) {
        requests.emplace_back();
        requests.back().action = kept.action;
        requests.back().stored = kept.preferences;
    }
    auto steps = listed(requests, actions);
    for (std::size_t i = 0; steps && i < steps->size(); ++i) {
        (*steps)[i].isOn = work.steps[i].isOn;
    }
    return steps;
}

} // namespace

KeptWork workIn(const DocumentList& list, const Marks& marks, const StepList& steps)
{
    KeptWork work;
    work.range = marks.forAll().text;
    work.documents.reserve(list.documents().size());
    for (const Document& document : list.documents()) {
        KeptDocument kept;
        kept.input = document.input;
        if (marks.isOwn(document.id)) {
            kept.range = marks.of(document.id).text;
        }
        if (document.isDone) {
            kept.done = document.read.value_or(FileState{});
        }
        work.documents.push_back(std::move(kept));
    }
    for (const ListedStep& step : steps.steps()) {
        work.steps.push_back({step.action, step.preferences, step.isOn});
    }
    return work;
}

BroughtBack bringBack(const KeptWork& work, const WorkPlaces& places)
{
    const QString text = QCoreApplication::translate("BringBack", "bringing back the list");
    constexpr int noSeries = -1;
    BroughtBack brought;
    std::vector<Input> inputs;
    for (const KeptDocument& document : work.documents) {
        inputs.push_back(document.input);
    }
    std::vector<Document> added = places.list.newOnes(inputs);
    QHash<QString, DocumentId> ids = places.list.idsByPath();
    for (const Document& document : added) {
        ids.insert(qtPath(document.input.path), document.id);
    }
    MarkDocuments::Changes own;
    for (const KeptDocument& document : work.documents) {
        const DocumentId id = ids.value(qtPath(document.input.path));
        brought.ids.push_back(id);
        if (document.range) {
            own.insert(id, Marks::ofText(*document.range, {}));
        } else if (places.marks.isOwn(id)) {
            own.insert(id, std::nullopt);
        }
    }
    const auto steps = stepsOf(work, places.actions);
    places.undo.beginMacro(text);
    if (!added.empty()) {
        places.undo.push(new AddDocuments(places.list, std::move(added), noSeries));
    }
    if (steps && *steps != places.steps.steps()) {
        places.undo.push(new ChangeSteps(places.steps, *steps, text));
    }
    places.undo.push(new MarkCommand(places.marks, std::nullopt,
                                     Marks::ofText(work.range, places.marks.forAll()), text));
    if (!own.isEmpty()) {
        places.undo.push(new MarkDocuments(places.marks, std::move(own), text, noSeries));
    }
    places.undo.endMacro();
    if (!steps) {
        brought.stepsFault = steps.error();
    }
    return brought;
}

} // namespace vantora::desktop
