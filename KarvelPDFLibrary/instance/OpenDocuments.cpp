#include "KarvelPDFLibrary/instance/OpenDocuments.h"

#include <algorithm>

namespace karvel {

int OpenDocuments::add(std::unique_ptr<Document> document)
{
    selected_ = nextHandle();
    documents_.push_back({selected_, std::move(document), 1});
    return selected_;
}

Result<OpenDocument*> OpenDocuments::selected()
{
    if (documents_.empty()) {
        return fail(ErrorCode::NoDocument, "no document is selected");
    }
    return find(selected_);
}

Result<OpenDocument*> OpenDocuments::find(int handle)
{
    const auto found =
        std::find_if(documents_.begin(), documents_.end(),
                     [&](const OpenDocument& open) { return open.handle == handle; });
    if (found == documents_.end()) {
        return fail(ErrorCode::NotFound,
                    "no open document has the handle " + std::to_string(handle));
    }
    return &*found;
}

Outcome OpenDocuments::select(int handle)
{
    Result<OpenDocument*> found = find(handle);
    if (!found) {
        return tl::unexpected<Error>(found.error());
    }
    selected_ = handle;
    return {};
}

Outcome OpenDocuments::closeSelected()
{
    Result<OpenDocument*> open = selected();
    if (!open) {
        return tl::unexpected<Error>(open.error());
    }
    const auto position = documents_.begin() + (*open - documents_.data());
    const bool isFirst = position == documents_.begin();
    const auto next = documents_.erase(position);
    if (documents_.empty()) {
        selected_ = 0;
    } else {
        selected_ = isFirst ? next->handle : (next - 1)->handle;
    }
    return {};
}

int OpenDocuments::closeAll()
{
    const int count = static_cast<int>(documents_.size());
    documents_.clear();
    selected_ = 0;
    return count;
}

} // namespace karvel
