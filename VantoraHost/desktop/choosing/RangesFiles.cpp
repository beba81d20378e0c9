#include "VantoraHost/desktop/choosing/RangesFiles.h"

#include "VantoraHost/core/choices/InputRanges.h"
#include "VantoraHost/core/outputs/TextFile.h"
#include "VantoraHost/desktop/documents/DocumentCommands.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtWidgets/QUndoStack>

#include <filesystem>
#include <unordered_map>

namespace vantora::desktop {

namespace {

/// Where paths lead, however their folders are spelled.
class Places {
public:
    std::string of(const std::string& path)
    {
        const auto slash = path.rfind('/');
        const std::string folder = path.substr(0, slash + 1);
        auto [known, isNew] = folders_.try_emplace(folder);
        if (isNew) {
            std::error_code failed;
            const auto real = std::filesystem::canonical(folder, failed);
            known->second = failed ? folder : real.native();
        }
        return known->second + '/' + path.substr(slash + 1);
    }

private:
    std::unordered_map<std::string, std::string> folders_;
};

QString sentenceOf(const Error& error)
{
    return RangesFiles::tr("%1: %2.", "a file and what is wrong with it")
        .arg(shownName(error.file), shownSentence(error.sentence));
}

} // namespace

RangesFiles::RangesFiles(DocumentList& list, Marks& marks, QUndoStack& undo, QObject* parent)
    : QObject(parent), list_(list), marks_(marks), undo_(undo)
{
}

Result<RangesFiles::Loaded> RangesFiles::read(const std::string& path,
                                              const std::vector<Input>& inputs,
                                              const std::vector<DocumentId>& ids,
                                              const std::atomic<bool>& stopped)
{
    const auto list = readRangesList(path, [&stopped] { return stopped.load(); });
    if (!list) {
        return tl::unexpected<Error>(list.error());
    }
    auto named = inputsOf(*list);
    if (!named) {
        return tl::unexpected<Error>(named.error());
    }
    Places places;
    std::unordered_map<std::string, DocumentId> byPlace;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        byPlace.emplace(places.of(inputs[i].path), ids[i]);
    }
    Loaded loaded;
    for (Input& input : *named) {
        const auto id = byPlace.find(places.of(input.path));
        if (id != byPlace.end()) {
            loaded.listed.emplace_back(id->second, QString::fromStdString(*input.range));
        } else {
            Input other = inputNamed(normalPath(input.path));
            other.range = std::move(input.range);
            loaded.others.push_back(std::move(other));
        }
    }
    return loaded;
}

void RangesFiles::load(const QString& path)
{
    std::vector<Input> inputs;
    std::vector<DocumentId> ids;
    for (const Document& document : list_.documents()) {
        inputs.push_back(document.input);
        ids.push_back(document.id);
    }
    background_.start([this, path = systemPath(path), inputs = std::move(inputs),
                       ids = std::move(ids)](const std::atomic<bool>& stopped) {
        auto loaded = read(path, inputs, ids, stopped);
        return [this, loaded = std::move(loaded), before = static_cast<int>(inputs.size())] {
            if (loaded) {
                take(*loaded, before);
            } else {
                emit noted(sentenceOf(loaded.error()));
            }
        };
    });
}

void RangesFiles::take(const Loaded& loaded, int before)
{
    MarkDocuments::Changes marks;
    for (const auto& [id, range] : loaded.listed) {
        marks.insert(id, Marks::ofText(range, {}));
    }
    std::vector<Document> added = list_.newOnes(loaded.others);
    for (const Document& document : added) {
        const QString range = QString::fromStdString(*document.input.range);
        marks.insert(document.id, Marks::ofText(range, {}));
    }
    const int named = marks.size();
    undo_.beginMacro(tr("Load Pages"));
    if (!added.empty()) {
        undo_.push(new AddDocuments(list_, std::move(added), -1));
    }
    undo_.push(new MarkDocuments(marks_, std::move(marks), tr("Load Pages"), -1));
    undo_.endMacro();
    const int others = before - static_cast<int>(loaded.listed.size());
    const QString text =
        RangesFiles::tr("%n document(s) have their pages from the list", nullptr, named);
    emit noted(others > 0
                   ? tr("%1; %2.", "loaded, and not named")
                         .arg(text, RangesFiles::tr("%n that it doesn't name stay as they were",
                                                    nullptr, others))
                   : text + '.');
}

void RangesFiles::save(const QString& path)
{
    std::string text;
    int count = 0;
    for (const Document& document : list_.documents()) {
        const PageSet& pages = marks_.of(document.id).pages;
        const QString range = (document.pages > 0 ? pages.upTo(document.pages) : pages).text();
        if (!range.isEmpty()) {
            text += rangesLine(document.input.path, range.toStdString());
            ++count;
        }
    }
    background_.start([this, path = systemPath(path), text = std::move(text),
                       count](const std::atomic<bool>& /*stopped*/) {
        const Outcome written = writePrivateText(path, text, ExistingText::Replace);
        return [this, written, count, name = shownName(path)] {
            emit noted(written ? RangesFiles::tr("The pages of %n document(s) are saved as %1.",
                                                 nullptr, count)
                                     .arg(name)
                               : sentenceOf(written.error()));
        };
    });
}

} // namespace vantora::desktop
