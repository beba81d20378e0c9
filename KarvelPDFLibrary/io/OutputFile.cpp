#include "KarvelPDFLibrary/io/OutputFile.h"

#include "KarvelPDFLibrary/io/Permissions.h"
#include "KarvelPDFLibrary/io/Replacement.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace karvel::io {

Result<OutputFile> OutputFile::create(const std::string& path, Existing existing)
{
    auto folder = Folder::open(folderOf(path));
    if (!folder) {
        return fail(ErrorCode::FileNotWritable, path + ": " + std::strerror(folder.error()));
    }
    return create(std::move(*folder), path, existing);
}

Result<OutputFile> OutputFile::create(Folder::Pointer folder, std::string path, Existing existing)
{
    const auto target = folder->statusOf(nameIn(path));
    if (target && existing == Existing::Refuse) {
        return fail(ErrorCode::FileExists, path + ": the file exists");
    }
    if (target && !S_ISREG(target->st_mode) && !S_ISLNK(target->st_mode)) {
        return fail(ErrorCode::FileNotWritable, path + ": is not a regular file");
    }
    for (;;) {
        std::string temporary = temporaryName();
        auto file = folder->openFile(temporary, O_WRONLY | O_CREAT | O_EXCL, 0600);
        if (file) {
            const auto made = claimTemporary(file->get());
            if (!made) {
                continue;
            }
            return OutputFile(std::move(folder), std::move(path), std::move(temporary),
                              std::move(*file), *made, target);
        }
        if (file.error() != EEXIST) {
            return fail(ErrorCode::FileNotWritable, path + ": " + std::strerror(file.error()));
        }
    }
}

OutputFile::OutputFile(Folder::Pointer folder, std::string path, std::string temporary,
                       FileDescriptor file, const struct stat& made,
                       const std::optional<struct stat>& there)
    : folder_(std::move(folder)), path_(std::move(path)), temporary_(std::move(temporary)),
      file_(std::move(file)), made_(made), sink_(file_.get()),
      replaced_(there ? std::optional(versionOf(*there)) : std::nullopt), existed_(there)
{
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : folder_(std::move(other.folder_)), path_(std::move(other.path_)),
      temporary_(std::exchange(other.temporary_, std::string())), file_(std::move(other.file_)),
      old_(std::move(other.old_)), made_(other.made_), sink_(std::move(other.sink_)),
      replaced_(other.replaced_), most_(other.most_), existed_(other.existed_),
      overtaken_(other.overtaken_), lostOwner_(other.lostOwner_)
{
}

OutputFile::~OutputFile()
{
    if (!temporary_.empty()) {
        folder_->remove(temporary_, versionOf(made_));
    }
}

tl::unexpected<Error> OutputFile::notWritable(int error) const
{
    return fail(ErrorCode::FileNotWritable, path_ + ": " + std::strerror(error));
}

bool OutputFile::isAt(const std::string& name) const
{
    const auto there = folder_->versionAt(name);
    return there && there->isOf(versionOf(made_));
}

// Its status, if it is there. A link is none that hands on anything. Whether it is still in the
// state that is to be replaced, taking the name will tell.
std::optional<struct stat> OutputFile::openReplaced()
{
    if (!replaced_) {
        return std::nullopt;
    }
    auto old = folder_->openFile(nameIn(path_), O_RDONLY | O_NONBLOCK | O_NOCTTY);
    if (!old && (old.error() == EACCES || old.error() == EPERM)) {
        old = folder_->openFile(nameIn(path_), O_PATH);
    }
    struct stat status = {};
    if (!old || fstat(old->get(), &status) != 0 || !versionOf(status).isOf(*replaced_)) {
        return std::nullopt;
    }
    old_ = std::move(*old);
    return status;
}

// Only now that everything is written: until then nobody else may read it.
Outcome OutputFile::setPermissions()
{
    if (const auto old = openReplaced()) {
        HandedOn done = HandedOn::All;
        if (const int error =
                handOnPermissions({old_.get(), *old}, {file_.get(), made_}, most_, done)) {
            return notWritable(error);
        }
        lostOwner_ = done != HandedOn::All;
        return {};
    }
    return fchmod(file_.get(), usualMode() & most_) == 0 ? Outcome() : Outcome(notWritable(errno));
}

Outcome OutputFile::flush()
{
    try {
        sink_.flush();
    } catch (const std::exception& exception) {
        return fail(ErrorCode::FileNotWritable, path_ + ": " + exception.what());
    }
    return {};
}

Outcome OutputFile::prepare()
{
    const Outcome flushed = flush();
    return flushed ? setPermissions() : flushed;
}

// In a folder that others can write to, the temporary name may be another file's by now; that must
// not get the target's name.
int OutputFile::takeFreeName(const std::string& name)
{
    if (!isAt(temporary_)) {
        return ESTALE;
    }
    const int failed = folder_->renameToFree(temporary_, name);
    if (failed == 0 && !isAt(name)) {
        folder_->renameToFree(name, temporary_);
        return ESTALE;
    }
    return failed;
}

int OutputFile::takeNameOfReplaced(const std::string& name)
{
    const Replacement taken =
        replace(*folder_, temporary_, versionOf(made_), name, *replaced_, old_);
    overtaken_ = taken.overtaken;
    return taken.error;
}

Outcome OutputFile::takeName()
{
    const std::string name = nameIn(path_);
    const int failed = replaced_ ? takeNameOfReplaced(name) : takeFreeName(name);
    if (failed == 0) {
        temporary_.clear(); // closing the file would give up the claim on it
        return {};
    }
    if (overtaken_) {
        return fail(ErrorCode::FileNotWritable, path_ + ": " + changedMeanwhile);
    }
    if (failed == EEXIST) {
        return fail(ErrorCode::FileExists, path_ + ": the file exists");
    }
    if (failed == ESTALE) {
        return fail(ErrorCode::FileNotWritable,
                    path_ + ": its temporary file was moved or replaced by another program");
    }
    return notWritable(failed);
}

Outcome OutputFile::commit()
{
    if (Outcome status = prepare(); !status) {
        return status;
    }
    if (fsync(file_.get()) != 0) {
        return notWritable(errno);
    }
    if (Outcome status = takeName(); !status) {
        return status;
    }
    folder_->sync();
    return {};
}

} // namespace karvel::io
