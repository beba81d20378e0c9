#pragma once

#include "VantoraHost/core/actions/ActionCatalog.h"
#include "VantoraHost/desktop/documents/Document.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/sequence/StepList.h"

#include <QtCore/QHash>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vantora::desktop {

/// What marks and steps together do to documents.
class Forecast {
public:
    /// Both outlive the forecast. The actions are those in the folders now.
    Forecast(const StepList& steps, const Marks& marks,
             const std::vector<std::filesystem::path>& actionFolders);
    ~Forecast();

    /// The steps for a document; none when it stays as it is.
    std::vector<StepRequest> stepsFor(DocumentId id) const;

    /// How many of its pages go; none when only an action itself knows.
    std::optional<int> goingFrom(const Document& document) const;

    /// What tells the steps for a document from others, as the report of a run has it; empty when
    /// they can't be made.
    std::string stepsDigestFor(DocumentId id) const;

    /// The steps are others.
    void forgetSteps() { sequences_.clear(); }

private:
    std::shared_ptr<const Sequence> sequenceFor(const QString& range) const;

    const StepList& steps_;
    const Marks& marks_;
    const ActionCatalog catalog_; ///< what is installed, once: looking takes the disk
    mutable QHash<QString, std::shared_ptr<const Sequence>> sequences_; ///< by the marks' range
};

} // namespace vantora::desktop
