#include "VantoraHost/verification/Amounts.h"

#include <algorithm>

namespace vantora::verification {

void countInto(Amounts& amounts, std::size_t Amount::*number, PdfFile& file,
               const Judgement& judgement)
{
    amounts.outlineEntries.*number = judgement.outline().size();
    amounts.fields.*number = judgement.fields().size();
    amounts.signatures.*number = static_cast<std::size_t>(
        std::count_if(judgement.fields().begin(), judgement.fields().end(),
                      [](const Field& field) { return field.isSignature; }));
    amounts.attachments.*number =
        treeEntries(valueOf(valueOf(file.catalog(), "/Names"), "/EmbeddedFiles"), "/Names").size();
    for (const Page& page : file.pages()) {
        for (const QPDFObjectHandle& annotation : annotationsOf(page.object)) {
            amounts.links.*number += isNamed(annotation, "/Subtype", "/Link") ? 1 : 0;
            amounts.attachments.*number +=
                isNamed(annotation, "/Subtype", "/FileAttachment") ? 1 : 0;
        }
    }
}

std::vector<LabelledPages> labelsOfRemoved(const Split& split)
{
    const std::vector<PageLabel> labels = labelsOf(split.file());
    std::vector<LabelledPages> runs;
    for (const int place : labels.empty() ? std::vector<int>() : split.removed()) {
        const std::string& label = labels[static_cast<std::size_t>(place)].text;
        if (runs.empty() || runs.back().last != place) {
            runs.push_back({place + 1, place + 1, label, label});
        }
        runs.back().last = place + 1;
        runs.back().lastLabel = label;
    }
    return runs;
}

} // namespace vantora::verification
