#pragma once

#include "VantoraHost/core/documents/PageSurvey.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vantora::cli {

/// The page that a sheet is made of, with a mark where its data go (Sheet.html).
extern const char sheetPage[];

/// An HTML page that stands alone and shows which pages would go, each beside its neighbours. What
/// it says of documents stands in it as data, which its script only ever shows as text; so whatever
/// they and their names hold, it loads and runs nothing.
class Sheet {
public:
    /// `choices` are what the pages are chosen by, as a person wrote it.
    explicit Sheet(std::vector<std::string> choices) : choices_(std::move(choices)) {}

    /// How many more pictures the sheet takes, so that browsers can show it.
    std::size_t picturesLeft() const { return mostPicturesOfSheet - pictures_; }

    /// Takes what was found in the document of an input. Names stand in it whole, since nobody
    /// knows from where the list that it saves will be used.
    void add(const std::string& input, const PageSurvey& survey);
    void addFailure(const std::string& input, const std::string& why);

    std::string html() const;

private:
    static constexpr std::size_t mostPicturesOfSheet = 3000;

    std::vector<std::string> choices_;
    std::string documents_; ///< JSON, as failed_
    std::string failed_;
    std::size_t pictures_ = 0;
};

} // namespace vantora::cli
