#include "VantoraHost/core/pictures/PictureService.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/choices/LibraryFacts.h"
#include "VantoraHost/core/documents/PdfLibrary.h"
#include "VantoraHost/core/pictures/PictureMessages.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/Verdicts.h"

#include <algorithm>
#include <charconv>
#include <memory>
#include <new>

namespace vantora {

namespace {

/// A portable pixmap, as the library makes one.
struct Pixmap {
    PagePicture picture;
    std::string_view pixels;
};

// The numbers of "P6\nWIDTH HEIGHT\n255\n", which the pixels follow.
std::optional<Pixmap> pixmapOf(const std::string& file)
{
    constexpr std::string_view start = "P6\n";
    constexpr std::string_view end = "\n255\n";
    Pixmap pixmap;
    if (file.compare(0, start.size(), start) != 0) {
        return std::nullopt;
    }
    const char* const last = file.data() + file.size();
    const auto width = std::from_chars(file.data() + start.size(), last, pixmap.picture.width);
    if (width.ec != std::errc() || width.ptr == last) {
        return std::nullopt;
    }
    const auto height = std::from_chars(width.ptr + 1, last, pixmap.picture.height);
    const auto header = static_cast<std::size_t>(height.ptr - file.data()) + end.size();
    if (height.ec != std::errc() || file.size() != header + pixelBytes(pixmap.picture)) {
        return std::nullopt;
    }
    pixmap.pixels = std::string_view(file).substr(header);
    return pixmap;
}

/// One document, looked at.
class Service {
public:
    Service(WorkerSide& side, PictureSetup setup) : side_(side), setup_(std::move(setup)) {}

    Outcome open()
    {
        auto loaded = loadPdfLibrary(setup_.library);
        if (!loaded) {
            return tl::unexpected<Error>(std::move(loaded.error()));
        }
        library_ = std::move(*loaded);
        FileAccess files{programFiles({setup_.library.parent_path()}), {}};
        files.readable.push_back(setup_.input);
        confine(setup_.memoryLimit, files);
        std::vector<std::string> passwords;
        if (!setup_.password.empty()) {
            passwords.push_back(setup_.password);
        }
        auto opened = OpenDocument::open(*library_, setup_.input, {}, passwords, Access::Read);
        if (!opened) {
            return tl::unexpected<Error>(withMemory(std::move(opened.error())));
        }
        document_ = std::make_unique<OpenDocument>(std::move(*opened));
        pages_ = library_->PageCount();
        return {};
    }

    bool sayOpened() { return say(PictureOpened{pages_}); }

    void doTasks()
    {
        while (const auto line = side_.nextLine()) {
            const auto task = pictureTaskOf(*line);
            if (!task || !(task->side > 0 ? sayPicture(*task) : sayFacts(*task))) {
                return;
            }
        }
    }

private:
    bool say(const PictureSaid& said) { return side_.write(pictureSaidMessage(said) + '\n'); }

    Error withMemory(Error error) const
    {
        if (error.reason == Reason::OutOfMemory && setup_.memoryLimit > 0) {
            error.sentence = memorySentence(setup_.memoryLimit);
        }
        return error;
    }

    bool sayPicture(const PictureTask& task)
    {
        constexpr int asPixmap = 5; // of the library's render options
        library_->ClearLastError();
        const std::string file = library_->RenderThumbnailToString(task.page, task.side, asPixmap);
        const auto pixmap = pixmapOf(file);
        if (pixmap) {
            return say(pixmap->picture) && side_.write(pixmap->pixels);
        }
        return say(PictureFailure{
            withMemory(lastLibraryFailure(*library_, setup_.input)
                           .value_or(Error{Reason::LibraryFailed, {}, "it can't be drawn"}))});
    }

    bool sayFacts(const PictureTask& task)
    {
        LibraryFacts facts(*library_, setup_.input);
        ShownPages told;
        const int last = static_cast<int>(
            std::min<std::int64_t>(std::int64_t{task.page} + task.pages - 1, pages_));
        for (int page = task.page; page <= last; ++page) {
            ShownPage fact;
            if (const auto size = facts.size(page)) {
                fact.width = size->width;
                fact.height = size->height;
            }
            fact.label = facts.label(page).value_or(QString::number(page)).toStdString();
            told.pages.push_back(std::move(fact));
        }
        return say(told);
    }

    WorkerSide& side_;
    PictureSetup setup_;
    std::unique_ptr<KarvelPDFLibraryCPDylibCPP1311> library_;
    std::unique_ptr<OpenDocument> document_; // closed before the library goes
    int pages_ = 0;
};

} // namespace

bool servePictures(const WorkerChannel& channel)
{
    giveUpPrivileges();
    WorkerSide side(channel);
    const auto first = side.nextLine();
    const auto setup = first ? pictureSetupOf(*first) : std::nullopt;
    if (!setup) {
        return false;
    }
    const auto refuse = [&](Error error) {
        side.write(pictureSaidMessage(PictureFailure{std::move(error)}) + '\n');
        return false;
    };
    try {
        Service service(side, *setup);
        if (const Outcome opened = service.open(); !opened) {
            return refuse(opened.error());
        }
        if (service.sayOpened()) {
            service.doTasks();
        }
        return true;
    } catch (const std::bad_alloc&) {
        return refuse({Reason::OutOfMemory, {}, memorySentence(setup->memoryLimit)});
    }
}

} // namespace vantora
