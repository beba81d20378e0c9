#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/desktop/pages/Marks.h"

#include <QtCore/QMetaType>
#include <QtCore/QString>

#include <optional>
#include <string>

namespace vantora::desktop {

/// How far a listed document has come.
enum class DocumentState {
    Reading, ///< it isn't known yet what it is
    Ready,
    Locked,  ///< needs a password
    Damaged, ///< can't be read
    Done,    ///< the last run has done it
    Failed,  ///< the last run could not
};

/// A document of the list.
struct Document {
    DocumentId id = 0;
    Input input; ///< its path is absolute
    DocumentState state = DocumentState::Reading;
    std::optional<Error> error; ///< why it is locked, damaged or failed
    int pages = 0;              ///< 0 until it is read
    std::uint64_t bytes = 0;
    std::optional<FileState> read; ///< the file as it was when it was read; none before
    std::string password;          ///< that opened it, UTF-8; empty for none
    std::size_t passwordsTried = 0;
    bool isDone = false; ///< by the last run, and nothing has changed since that it went by
    quint64 version = 0; ///< another number whenever it was read anew

    /// Whether its pages are known, so that it can take part in a run.
    bool isUsable() const
    {
        return state == DocumentState::Ready || state == DocumentState::Done ||
               state == DocumentState::Failed;
    }
};

/// The file's name, and the folder that it is in, as people see them.
QString nameOf(const Document& document);
QString folderOf(const Document& document);

} // namespace vantora::desktop
