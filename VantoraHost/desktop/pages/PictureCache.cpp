#include "VantoraHost/desktop/pages/PictureCache.h"

#include <algorithm>
#include <vector>

namespace vantora::desktop {

QPixmap PictureCache::picture(const PageKey& page)
{
    const auto found = kept_.find(page);
    if (found == kept_.end()) {
        return {};
    }
    found->used = ++time_;
    return found->picture;
}

int PictureCache::side(const PageKey& page) const
{
    const auto found = kept_.constFind(page);
    return found == kept_.constEnd() ? 0 : found->side;
}

void PictureCache::put(const PageKey& page, int side, const QPixmap& picture)
{
    Kept& kept = kept_[page];
    bytes_ -= bytesOf(kept);
    kept = {picture, side, ++time_};
    bytes_ += bytesOf(kept);
    if (bytes_ > most_) {
        makeRoom();
    }
}

void PictureCache::forget(DocumentId document)
{
    for (auto kept = kept_.begin(); kept != kept_.end();) {
        if (kept.key().first == document) {
            bytes_ -= bytesOf(*kept);
            kept = kept_.erase(kept);
        } else {
            ++kept;
        }
    }
}

qint64 PictureCache::bytesOf(const Kept& kept)
{
    constexpr qint64 bytesOfAPixel = 4;
    return bytesOfAPixel * kept.picture.width() * kept.picture.height();
}

// A quarter goes at a time, but never the latest picture.
void PictureCache::makeRoom()
{
    std::vector<std::pair<quint64, PageKey>> oldest;
    for (auto kept = kept_.cbegin(); kept != kept_.cend(); ++kept) {
        oldest.emplace_back(kept->used, kept.key());
    }
    std::sort(oldest.begin(), oldest.end());
    oldest.pop_back();
    for (const auto& [used, page] : oldest) {
        if (bytes_ <= most_ / 4 * 3) {
            break;
        }
        bytes_ -= bytesOf(kept_[page]);
        kept_.remove(page);
    }
}

} // namespace vantora::desktop
