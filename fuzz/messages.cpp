#include "VantoraHost/core/choices/RangesFile.h"
#include "VantoraHost/core/documents/PageSurvey.h"
#include "VantoraHost/core/workers/WorkerMessages.h"

#include <cstdlib>
#include <iostream>

namespace {

void require(bool holds, const char* law)
{
    if (!holds) {
        std::cerr << "broken: " << law << '\n';
        std::abort();
    }
}

std::optional<PreferencesMap> noOptions(const QByteArray& /*bytes*/)
{
    return PreferencesMap();
}

std::string listOf(const std::vector<vantora::DocumentRange>& ranges)
{
    std::string text;
    for (const vantora::DocumentRange& one : ranges) {
        text += vantora::rangesLine(one.path, one.range);
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vantora;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto setup = setupOf(bytes, noOptions)) {
        const std::string text = setupMessage(*setup);
        const auto again = setupOf(text, noOptions);
        require(again && setupMessage(*again) == text, "a setup that was read is read again");
    }
    if (const auto tasks = tasksOf(bytes)) {
        const std::string text = tasksMessage(*tasks);
        const auto again = tasksOf(text);
        require(again && tasksMessage(*again) == text, "tasks that were read are read again");
    }
    if (const auto answer = answerOf(bytes)) {
        const std::string text = answerMessage(*answer);
        const auto again = answerOf(text);
        require(again && answerMessage(*again) == text, "an answer that was read is read again");
    }
    if (const auto survey = pageSurveyOf(bytes)) {
        const std::string text = toJson(*survey, Extent::Whole);
        const auto again = pageSurveyOf(text);
        require(again && toJson(*again, Extent::Whole) == text,
                "a survey that was read is read again");
    }
    if (const auto ranges = documentRangesOf(bytes)) {
        const std::string text = listOf(*ranges);
        const auto again = documentRangesOf(text);
        require(again && again->size() == ranges->size() && listOf(*again) == text,
                "a list of ranges that was read is read again");
    }
    return 0;
}
