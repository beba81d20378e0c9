#pragma once

#include "VantoraHost/desktop/pages/Marks.h"

#include <QtCore/QHash>
#include <QtGui/QPixmap>

#include <utility>

namespace vantora::desktop {

/// A page of a document.
using PageKey = std::pair<DocumentId, int>;

/// Pictures that are kept, the latest of each page; the least recently used go when there are too
/// many.
class PictureCache {
public:
    /// How many bytes of pixels are kept.
    explicit PictureCache(qint64 most) : most_(most) {}

    /// The picture of a page at whatever size there is; null when there is none.
    QPixmap picture(const PageKey& page);

    /// Pixels of the longer side that the page's picture was asked for with; 0 for none.
    int side(const PageKey& page) const;

    void put(const PageKey& page, int side, const QPixmap& picture);
    void forget(DocumentId document);

    qint64 bytes() const { return bytes_; }

private:
    struct Kept {
        QPixmap picture;
        int side = 0;
        quint64 used = 0; ///< a time that only grows
    };
    static qint64 bytesOf(const Kept& kept);
    void makeRoom();

    const qint64 most_;
    qint64 bytes_ = 0;
    quint64 time_ = 0;
    QHash<PageKey, Kept> kept_;
};

} // namespace vantora::desktop
