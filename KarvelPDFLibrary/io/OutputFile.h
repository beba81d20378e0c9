#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/io/ByteSink.h"
#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "KarvelPDFLibrary/io/FileVersion.h"
#include "KarvelPDFLibrary/io/Folder.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace karvel::io {

enum class Existing { Refuse, Replace };

/// A file that appears under its name whole or not at all: bytes go to a temporary file beside the
/// target, which nobody else may read, and which is synced and renamed by commit(). What is
/// replaced is the very file, in the very state, that was to be: anything else that has come in its
/// place stays. Without commit() nothing is left behind.
class OutputFile final : public ByteSink {
public:
    /// Fails when the folder is missing or not writable, when the target is no regular file or
    /// link, or when it exists and may not be replaced. A link is replaced itself.
    static Result<OutputFile> create(const std::string& path, Existing existing);

    /// The same in a folder that is held open; `path` is for messages, but its last part is the
    /// name.
    static Result<OutputFile> create(Folder::Pointer folder, std::string path, Existing existing);

    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&&) = delete;
    ~OutputFile() override;

    void write(const char* bytes, std::size_t length) override { sink_.write(bytes, length); }
    void copy(ByteSource& source, std::int64_t offset, std::uint64_t length) override
    {
        sink_.copy(source, offset, length);
    }

    int descriptor() const { return file_.get(); }

    /// Lets what was written be read by the descriptor; commit does so as well.
    Outcome flush();

    /// What is to be replaced, rather than what had the name when this was created.
    void replaceOnly(const FileVersion& version) { replaced_ = version; }

    /// Rights that the finished file has at most, whatever the umask or the file that it replaces
    /// allow: those of the file that its content comes from (modeOf).
    void allowAtMost(mode_t mode) { most_ = mode; }

    /// Syncs the file, gives it the target's name and syncs the folder. A file that is replaced
    /// hands on its owner, mode and access control list. After a failure the target is as it was.
    Outcome commit();

    /// The parts of commit() for those who commit many files at a time: between these two the file
    /// has to be synced, and after them the folder (Folder::sync).
    Outcome prepare();
    Outcome takeName();

    /// Whether something had the name when this was created.
    bool existed() const { return existed_; }

    /// Whether takeName failed because the target isn't the file that was to be replaced.
    bool isOvertaken() const { return overtaken_; }

    /// Whether what is replaced had an owner or group that this file couldn't get.
    bool lostOwner() const { return lostOwner_; }

    /// Takes another name in the same folder instead.
    void aimAt(std::string path) { path_ = std::move(path); }

    const Folder::Pointer& folder() const { return folder_; }

private:
    OutputFile(Folder::Pointer folder, std::string path, std::string temporary, FileDescriptor file,
               const struct stat& made, const std::optional<struct stat>& there);
    Outcome setPermissions();
    std::optional<struct stat> openReplaced();
    int takeFreeName(const std::string& name);
    int takeNameOfReplaced(const std::string& name);
    bool isAt(const std::string& name) const;
    tl::unexpected<Error> notWritable(int error) const;

    Folder::Pointer folder_;
    std::string path_;
    std::string temporary_; ///< its name in the folder; empty once it has its own
    FileDescriptor file_;
    FileDescriptor old_; ///< what is to be replaced, once this is prepared
    struct stat made_;   ///< which file it is, as it was when it was made
    DescriptorSink sink_;
    std::optional<FileVersion> replaced_;
    mode_t most_ = 0777;
    bool existed_ = false;
    bool overtaken_ = false;
    bool lostOwner_ = false;
};

} // namespace karvel::io
