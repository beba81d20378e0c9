#pragma once

#include "VantoraHost/desktop/pages/Marks.h"

#include <QtCore/QString>

namespace vantora::desktop {

/// A document whose pages can be shown.
struct ShownDocument {
    DocumentId id = 0;
    QString path;      ///< of the file, absolute
    QString name;      ///< as people are to see it
    QString password;  ///< that opens it; empty for none
    quint64 state = 0; ///< another number whenever the file is another, so that it is shown anew
    int pages = 0;     ///< 0 where that isn't known yet

    bool operator==(const ShownDocument& other) const
    {
        return id == other.id && path == other.path && name == other.name &&
               password == other.password && state == other.state && pages == other.pages;
    }
};

} // namespace vantora::desktop
