#include "VantoraHost/cli/pages/PagesCommand.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/pages/Sheet.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/choices/RangesFile.h"
#include "VantoraHost/core/choices/StepChoices.h"
#include "VantoraHost/core/documents/SurveyShares.h"
#include "VantoraHost/core/outputs/TextFile.h"
#include "VantoraHost/core/reports/FailureJson.h"

#include <optional>
#include <ostream>

namespace vantora::cli {

namespace {

/// The choices as they stand on the command line, "--choose last:2".
std::vector<std::string> shownChoices(const ChoiceSet& set)
{
    std::vector<std::string> texts;
    for (const auto& [option, choices] : {std::pair("--choose ", &set.choose),
                                          {"--keep ", &set.keep},
                                          {"--except ", &set.except}}) {
        for (const Choice& choice : *choices) {
            texts.push_back(option + choice.text);
        }
    }
    return texts;
}

/// Prints which pages of documents choices name, in the order in which the documents are named.
class Selection {
public:
    Selection(const PagesOptions& options, const ChoiceSet& choices, const Looking& looking,
              const Streams& streams)
        : options_(options), choices_(choices), looking_(looking), streams_(streams),
          isShared_(looking.hasProcesses() && isWorthSharing(choices)),
          sheet_(shownChoices(choices))
    {
    }

    /// Returns false when the person doesn't want to wait any longer.
    bool run()
    {
        Looking::Sharing sharing;
        sharing.look = [&](const std::string& input, std::size_t part) {
            return json(input, look(input, part), Extent::Whole);
        };
        if (isShared_) {
            sharing.furtherParts = [&](const std::string& input, const std::string& first,
                                       std::size_t processes) {
                return shares_.furtherParts(input, first, processes);
            };
        }
        sharing.take = [&](const std::string& input, Result<std::vector<std::string>> found) {
            take(input, std::move(found).and_then(SurveyShares::join));
        };
        return looking_.atEach(sharing);
    }

    /// Writes the files that are asked for, and says how much was found.
    Outcome finish() const
    {
        const auto existing = options_.overwrite ? ExistingText::Replace : ExistingText::Refuse;
        Outcome written;
        if (!options_.reportPath.empty()) {
            written = writePrivateText(options_.reportPath, report_, existing);
        }
        if (written && !options_.sheetPath.empty()) {
            written = writePrivateText(options_.sheetPath, sheet_.html(), existing);
        }
        if (looking_.inputs().size() > 1) {
            const Language& language = streams_.language;
            printNote(streams_,
                      language.text("%1 in %2, of %3 looked at",
                                    {language.counted(pages_, "page", "pages"),
                                     language.counted(withPages_, "document", "documents"),
                                     language.number(looking_.inputs().size())}) +
                          (failed_ > 0
                               ? "; " + language.text("%1 failed", {language.number(failed_)})
                               : ""));
        }
        return written;
    }

    bool allDone() const { return failed_ == 0; }

private:
    Result<PageSurvey> look(const std::string& input, std::size_t part)
    {
        SurveyRequest request = {choices_, looking_.passwords()};
        request.pictures = options_.sheetPath.empty() ? 0 : sheet_.picturesLeft();
        request.span = isShared_ ? shares_.spanOf(input, part) : PageSpan();
        return surveyPages(looking_.library(), input, looking_.standardInput(), request);
    }

    static std::string json(const std::string& input, const Result<PageSurvey>& survey,
                            Extent extent)
    {
        return survey ? toJson(*survey, extent) : failureJson(survey.error(), input);
    }

    void take(const std::string& input, Result<PageSurvey> survey)
    {
        if (!survey) {
            survey.error().file = input;
        }
        const std::string line = json(input, survey, Extent::Printed) + '\n';
        report_ += options_.reportPath.empty() ? "" : line;
        if (options_.json) {
            streams_.out << line;
        } else if (survey) {
            // What a name would tell a terminal to do, it only shows.
            streams_.out << rangesLine(streams_.outIsTerminal ? shown(input) : input,
                                       rangeTextOf(survey->chosen));
        }
        streams_.out.flush();
        if (survey) {
            pages_ += survey->chosen.size();
            withPages_ += survey->chosen.empty() ? 0 : 1;
            if (!options_.sheetPath.empty()) {
                sheet_.add(input, *survey);
            }
            printRepairs(streams_, input, survey->repairs);
            for (const std::string& warning : survey->warnings) {
                printWarning(streams_, input, warning);
            }
        } else {
            ++failed_;
            sheet_.addFailure(inputName(input), survey.error().sentence);
            printError(streams_, survey.error());
        }
    }

    const PagesOptions& options_;
    const ChoiceSet& choices_;
    const Looking& looking_;
    const Streams& streams_;
    const bool isShared_;
    SurveyShares shares_;
    Sheet sheet_;
    std::string report_;
    std::size_t pages_ = 0;
    std::size_t withPages_ = 0; ///< documents
    std::size_t failed_ = 0;
};

Result<ChoiceSet> choicesOf(const PagesOptions& options)
{
    PreferencesMap preferences;
    for (const auto& [key, value] : options.choices) {
        preferences.insert(QString::fromStdString(key), QString::fromStdString(value));
    }
    return choicesIn(preferences).map([](std::optional<ChoiceSet> set) {
        return std::move(set).value_or(ChoiceSet());
    });
}

// Before documents are looked at for nothing.
Outcome mayBeWritten(const PagesOptions& options)
{
    for (const std::string& path : {options.sheetPath, options.reportPath}) {
        if (!path.empty() && !options.overwrite && isThere(path)) {
            return fail(Reason::OutputExists, path, "exists already");
        }
    }
    return {};
}

} // namespace

int showPages(const PagesOptions& options, const Installation& installation, const Streams& streams)
{
    const Result<ChoiceSet> choices = choicesOf(options);
    if (!choices) {
        return failedWith(streams, options.json, choices.error());
    }
    if (const Outcome free = mayBeWritten(options); !free) {
        return failedWith(streams, options.json, free.error());
    }
    const Result<Looking> looking = Looking::prepare(options, installation, streams);
    if (!looking) {
        return failedWith(streams, options.json, looking.error());
    }
    Selection selection(options, *choices, *looking, streams);
    if (!selection.run()) {
        return InterruptedByUser;
    }
    if (const Outcome written = selection.finish(); !written) {
        return failedWith(streams, options.json, written.error());
    }
    return selection.allDone() ? AllDone : SomeFailed;
}

} // namespace vantora::cli
