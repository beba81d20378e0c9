#include "VantoraHost/core/pictures/PictureMessages.h"

#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/JsonReading.h"

#include <QtCore/QJsonArray>

#include <algorithm>
#include <climits>
#include <cmath>

namespace vantora {

namespace {

// The longest label that is shown, in characters.
constexpr int longestLabel = 64;

// A sentence about a page names no more of a document than this.
constexpr int longestSentence = 1000;

constexpr double hundredths = 100;

int sizeNumber(double points)
{
    constexpr double largest = 1e7;
    return std::isfinite(points)
               ? static_cast<int>(std::lround(std::clamp(points, 0.0, largest) * hundredths))
               : 0;
}

// A whole number from 0 to `most`, or nothing.
std::optional<int> numberUpTo(const QJsonValue& value, int most)
{
    const auto number = wholeNumber(value);
    return number && *number <= static_cast<std::uint64_t>(most)
               ? std::optional<int>(static_cast<int>(*number))
               : std::nullopt;
}

JsonObject factsJson(const ShownPages& facts)
{
    std::vector<int> sizes;
    std::vector<std::string> labels;
    for (const ShownPage& page : facts.pages) {
        sizes.push_back(sizeNumber(page.width));
        sizes.push_back(sizeNumber(page.height));
        labels.push_back(page.label);
    }
    return JsonObject().add("sizes", sizes).add("labels", labels);
}

std::optional<PictureSaid> factsOf(const QJsonObject& json, const PictureTask& asked)
{
    const QJsonArray sizes = json["sizes"].toArray();
    const QJsonArray labels = json["labels"].toArray();
    if (labels.size() > asked.pages || sizes.size() != 2 * labels.size()) {
        return std::nullopt;
    }
    ShownPages facts;
    for (int i = 0; i < labels.size(); ++i) {
        const auto width = numberUpTo(sizes[2 * i], INT_MAX);
        const auto height = numberUpTo(sizes[2 * i + 1], INT_MAX);
        if (!width || !height) {
            return std::nullopt;
        }
        facts.pages.push_back({*width / hundredths, *height / hundredths,
                               labels[i].toString().left(longestLabel).toStdString()});
    }
    return facts;
}

std::optional<PictureSaid> pictureOf(const QJsonObject& json, const PictureTask& asked)
{
    const auto width = numberUpTo(json["width"], asked.side);
    const auto height = numberUpTo(json["height"], asked.side);
    if (!width || !height || *width == 0 || *height == 0) {
        return std::nullopt;
    }
    return PagePicture{*width, *height, {}};
}

} // namespace

std::string pictureSetupMessage(const PictureSetup& setup)
{
    return JsonObject()
        .add("library", setup.library.native())
        .add("input", setup.input)
        .add("password", setup.password)
        .add("memory", setup.memoryLimit)
        .text();
}

std::optional<PictureSetup> pictureSetupOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    const auto memory = json ? wholeNumber((*json)["memory"]) : std::nullopt;
    if (!memory || !(*json)["input"].isString()) {
        return std::nullopt;
    }
    return PictureSetup{bytesOf((*json)["library"].toString()),
                        bytesOf((*json)["input"].toString()),
                        bytesOf((*json)["password"].toString()), *memory};
}

std::string pictureTaskMessage(const PictureTask& task)
{
    return JsonObject()
        .add("page", task.page)
        .add("side", task.side)
        .add("pages", task.pages)
        .text();
}

std::optional<PictureTask> pictureTaskOf(std::string_view line)
{
    const auto json = jsonObjectOf(line);
    if (!json) {
        return std::nullopt;
    }
    const auto page = numberUpTo((*json)["page"], INT_MAX);
    const auto side = numberUpTo((*json)["side"], largestPicture);
    const auto pages = numberUpTo((*json)["pages"], mostFacts);
    if (!page || !side || !pages || (*side == 0) == (*pages == 0)) {
        return std::nullopt;
    }
    return PictureTask{*page, *side, *pages};
}

std::string pictureSaidMessage(const PictureSaid& said)
{
    JsonObject json;
    if (const auto* opened = std::get_if<PictureOpened>(&said)) {
        json.add("opened", opened->pages);
    } else if (const auto* facts = std::get_if<ShownPages>(&said)) {
        json = factsJson(*facts);
    } else if (const auto* picture = std::get_if<PagePicture>(&said)) {
        json.add("width", picture->width).add("height", picture->height);
    } else {
        json.add("failed", errorJson(std::get<PictureFailure>(said).error));
    }
    return json.text();
}

std::optional<PictureSaid> pictureSaidOf(std::string_view line, const PictureTask& asked)
{
    const auto json = jsonObjectOf(line);
    if (!json) {
        return std::nullopt;
    }
    if (json->contains("failed")) {
        Error error = errorOf((*json)["failed"].toObject(), {});
        error.sentence.resize(std::min<std::size_t>(error.sentence.size(), longestSentence));
        return PictureFailure{std::move(error)};
    }
    if (json->contains("opened")) {
        const auto pages = numberUpTo((*json)["opened"], INT_MAX);
        return pages ? std::optional<PictureSaid>(PictureOpened{*pages}) : std::nullopt;
    }
    return asked.side > 0 ? pictureOf(*json, asked) : factsOf(*json, asked);
}

std::size_t pixelBytes(const PagePicture& picture)
{
    constexpr std::size_t channels = 3;
    return static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) *
           channels;
}

} // namespace vantora
