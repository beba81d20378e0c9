#include "VantoraHost/cli/watch/WatchCommand.h"

#include "VantoraHost/cli/console/InputFiles.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/watch/WatchRun.h"

#include <sys/stat.h>

#include <filesystem>

namespace vantora::cli {

namespace fs = std::filesystem;

namespace {

// As it is known whatever folder the command is given in.
std::string absolutePath(const std::string& path)
{
    std::error_code failed;
    const bool stepsUp = path.find("..") != std::string::npos;
    fs::path absolute = stepsUp ? fs::canonical(path, failed) : fs::path();
    if (!stepsUp || failed) {
        absolute = fs::absolute(path, failed).lexically_normal();
    }
    std::string text = absolute.string();
    while (text.size() > 1 && text.back() == '/') {
        text.pop_back();
    }
    return text;
}

void makeAbsolute(WatchOptions& options)
{
    for (std::string& folder : options.folders) {
        folder = absolutePath(folder);
    }
    for (std::string* path : {&options.outputs, &options.failed, &options.done}) {
        *path = path->empty() ? *path : absolutePath(*path);
    }
    std::get<ToFolder>(*options.run.destination).path = options.outputs;
}

Outcome foldersDiffer(const std::vector<WatchedFolder>& folders)
{
    for (std::size_t i = 0; i < folders.size(); ++i) {
        for (std::size_t other = 0; other < i; ++other) {
            if (folders[i].identity() == folders[other].identity()) {
                return fail(Reason::WrongUsage, folders[i].path(), "is named twice");
            }
        }
    }
    return {};
}

// Outputs would arrive as documents.
Outcome outputsLieOutside(const std::string& outputs, const std::vector<WatchedFolder>& folders)
{
    if (!isFolder(outputs)) {
        return fail(Reason::OutputFolderMissing, outputs,
                    isThere(outputs) ? "is not a folder" : "is not there");
    }
    for (const WatchedFolder& folder : folders) {
        if (isInside(outputs, folder.identity())) {
            return fail(Reason::WrongUsage, outputs,
                        "the folder for outputs lies in the watched folder " +
                            shown(folder.path()) + "; name one outside of it");
        }
    }
    return {};
}

// Documents are moved there by their names alone.
Outcome takesDocuments(const std::string& place, const std::vector<WatchedFolder>& folders)
{
    struct stat status = {};
    if (place.empty()) {
        return {};
    }
    if (!isFolder(place) || ::stat(place.c_str(), &status) != 0) {
        return fail(Reason::OutputFolderMissing, place,
                    isThere(place) ? "is not a folder" : "is not there");
    }
    for (const WatchedFolder& folder : folders) {
        const FileIdentity identity = folder.identity();
        if (identity == FileIdentity{status.st_dev, status.st_ino}) {
            return fail(Reason::WrongUsage, place,
                        "is watched itself; name another folder, such as " + shown(folder.path()) +
                            "/failed");
        }
        if (identity.device != status.st_dev) {
            return fail(Reason::WrongUsage, place,
                        "is not on the file system of " + shown(folder.path()) +
                            "; name a folder there, such as " + shown(folder.path()) + "/failed");
        }
    }
    return {};
}

Result<std::vector<WatchedFolder>> foldersOf(const WatchOptions& options)
{
    std::vector<WatchedFolder> folders;
    for (const std::string& path : options.folders) {
        auto opened = WatchedFolder::open(path);
        if (!opened) {
            return tl::unexpected<Error>(std::move(opened.error()));
        }
        folders.push_back(std::move(*opened));
    }
    for (const Outcome& fit :
         {foldersDiffer(folders), outputsLieOutside(options.outputs, folders),
          takesDocuments(options.done, folders), takesDocuments(options.failed, folders)}) {
        if (!fit) {
            return tl::unexpected<Error>(fit.error());
        }
    }
    return folders;
}

Result<WatchRun::Equipment> equipmentOf(const WatchOptions& options,
                                        const Installation& installation,
                                        const GuiPartSource& guiPart)
{
    auto steps = stepsOfRun(options.run, installation, guiPart);
    if (!steps) {
        return tl::unexpected<Error>(std::move(steps.error()));
    }
    auto passwords = readPasswords(options.run.passwordFile);
    if (!passwords) {
        return tl::unexpected<Error>(std::move(passwords.error()));
    }
    auto folders = foldersOf(options);
    if (!folders) {
        return tl::unexpected<Error>(std::move(folders.error()));
    }
    auto report = ReportFile::open(options.run.reportPath, ExistingReport::Continue);
    if (!report) {
        return tl::unexpected<Error>(std::move(report.error()));
    }
    return WatchRun::Equipment{std::move(*steps), std::move(*passwords), std::move(*folders),
                               std::move(*report)};
}

} // namespace

int watch(const WatchOptions& given, const Installation& installation, const GuiPartSource& guiPart,
          const Streams& streams)
{
    WatchOptions options = given;
    makeAbsolute(options);
    auto equipment = equipmentOf(options, installation, guiPart);
    if (!equipment) {
        return failedWith(streams, options.run.json, equipment.error());
    }
    return WatchRun(options, std::move(*equipment), installation, guiPart, streams).run();
}

} // namespace vantora::cli
