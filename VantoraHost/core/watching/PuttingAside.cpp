#include "VantoraHost/core/watching/PuttingAside.h"

#include "VantoraApp/environment/FileNames.h"

#include <QtCore/QString>

#include <cerrno>

namespace vantora {

namespace {

// Each byte of a name is one character here.
QString charactersOf(const std::string& name)
{
    return QString::fromLatin1(name.data(), static_cast<int>(name.size()));
}

tl::unexpected<Error> stays(const std::string& name, const std::string& folder, int why)
{
    return fail(Reason::OutputNotWritable, name,
                "stays where it is, as it can't be moved to " + folder + ": " +
                    (why == EXDEV ? "that is another file system" : systemMessage(why)));
}

} // namespace

Result<std::string> putAside(const karvel::io::Folder& from, const std::string& name,
                             const FileVersion& version, const std::string& folder)
{
    const auto to = karvel::io::Folder::open(folder);
    if (!to) {
        return stays(name, folder, to.error());
    }
    const auto changed = [&] {
        return fail(Reason::ChangedMeanwhile, name, "stays where it is, as it was changed");
    };
    if (from.versionAt(name) != version) {
        return changed();
    }
    int failed = 0;
    std::string moved;
    const auto isTaken = [&](const std::string& copy) {
        moved = copy;
        failed = from.moveToFree(name, **to, copy);
        return failed == EEXIST;
    };
    FirstFreeCopyName(charactersOf(name),
                      [&](const QString& copy) { return isTaken(copy.toLatin1().toStdString()); });
    if (failed != 0) {
        return stays(name, folder, failed);
    }
    if ((*to)->versionAt(moved) != version) {
        (*to)->moveToFree(moved, from, name);
        return changed();
    }
    return moved;
}

} // namespace vantora
