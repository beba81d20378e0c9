#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/pictures/ImageFile.h"
#include "KarvelPDFLibrary/pictures/Raster.h"
#include "KarvelPDFLibrary/pictures/ReducedImages.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What looks at pages: poppler and the image formats, in a module of its own that is loaded when
/// it is first needed. Loading what they depend on takes longer than deleting pages from most
/// documents.
namespace karvel::viewer {

enum class TextOrder { Reading, Physical, ContentStream };

struct PictureRequest {
    double dpi = 72;
    int width = 0; // pixels
    int height = 0;
    bool grey = false; // one byte a pixel instead of three
    bool smooth = true;
    std::uint32_t paper = 0xFFFFFFFF; // alpha, red, green, blue
};

/// A document that is open for being looked at. Pages count from 1.
class Viewed {
public:
    virtual ~Viewed() = default;

    /// A page's text in UTF-8; nothing when the page cannot be shown.
    virtual std::optional<std::string> text(int page, TextOrder order) = 0;

    /// A page's pixels; nothing when the page cannot be rendered.
    virtual std::optional<pictures::Raster> picture(int page, const PictureRequest& request) = 0;

    /// Whether anything was found wrong while the last picture was made: then it may show less than
    /// the page has.
    virtual bool wasDamaged() const = 0;
};

class Viewer {
public:
    /// Null when the document cannot be opened.
    virtual std::unique_ptr<Viewed> openFile(const std::string& path,
                                             const std::string& password) = 0;
    virtual std::unique_ptr<Viewed> openBytes(std::vector<char> bytes,
                                              const std::string& password) = 0;

    /// pictures::imageFile of the module.
    virtual Result<std::string> imageFile(const pictures::Raster& raster,
                                          pictures::ImageFormat format, int quality) = 0;

    /// pictures::reducedJpeg and pictures::reducedFax of the module.
    virtual std::optional<pictures::Raster> reducedJpeg(const std::string& bytes,
                                                        pictures::Reduction reduction,
                                                        const pictures::Enough& enough) = 0;
    virtual std::optional<pictures::Raster> reducedFax(const std::string& bytes,
                                                       const pictures::FaxImage& image,
                                                       pictures::Reduction reduction,
                                                       const pictures::Enough& enough) = 0;

protected:
    ~Viewer() = default;
};

/// The module's one viewer, which is loaded at the first call. May be called from any thread.
Result<Viewer*> loadedViewer();

} // namespace karvel::viewer
