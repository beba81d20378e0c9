#include "KarvelPDFLibrary/rendering/ScannedPicture.h"

#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"
#include "KarvelPDFLibrary/viewer/Viewer.h"

#include <algorithm>
#include <cmath>

namespace karvel::rendering {

namespace {

constexpr double leastDpi = 36;
constexpr double pointsPerInch = 72;

struct Placed {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
    bool isUpright = false; // or turned by 90 degrees
};

std::optional<Placed> placed(const content::PaintedImage& image)
{
    const auto& [a, b, c, d, e, f] = image.placement;
    const bool isUpright = b == 0 && c == 0;
    if (!isUpright && !(a == 0 && d == 0)) {
        return std::nullopt;
    }
    const double width = isUpright ? a : c;
    const double height = isUpright ? d : b;
    return Placed{std::min(e, e + width), std::min(f, f + height), std::max(e, e + width),
                  std::max(f, f + height), isUpright};
}

/// Whether an image covers a page, but for what nobody would notice.
bool covers(const Placed& image, const page_boxes::Rectangle& page)
{
    const double slack = 0.02 * std::min(page.right - page.left, page.top - page.bottom);
    const auto near = [&](double one, double other) { return std::abs(one - other) <= slack; };
    return near(image.left, page.left) && near(image.right, page.right) &&
           near(image.bottom, page.bottom) && near(image.top, page.top);
}

/// The number of grey or colour channels that a colour space has; 0 for what is more than that.
int plainChannels(QPDFObjectHandle space)
{
    const std::string name =
        space.isName() ? space.getName()
        : space.isArray() && space.getArrayNItems() > 0 && space.getArrayItem(0).isName()
            ? space.getArrayItem(0).getName()
            : "";
    if (name == "/DeviceGray" || name == "/CalGray") {
        return 1;
    }
    if (name == "/DeviceRGB" || name == "/CalRGB") {
        return 3;
    }
    if (name == "/ICCBased" && space.isArray() && space.getArrayNItems() > 1 &&
        space.getArrayItem(1).isStream()) {
        QPDFObjectHandle count = space.getArrayItem(1).getDict().getKey("/N");
        const int channels = count.isInteger() ? count.getIntValueAsInt() : 0;
        return channels == 1 || channels == 3 ? channels : 0;
    }
    return 0;
}

QPDFObjectHandle only(QPDFObjectHandle value)
{
    return value.isArray() && value.getArrayNItems() == 1 ? value.getArrayItem(0) : value;
}

/// What an image's data are, as far as it matters here.
struct Stored {
    enum class Kind { Jpeg, Fax };
    Kind kind = Kind::Jpeg;
    int width = 0; // pixels
    int height = 0;
    int channels = 0;
    pictures::FaxImage fax;
};

int integerAt(QPDFObjectHandle dictionary, const char* key, int otherwise)
{
    QPDFObjectHandle value = dictionary.isDictionary() ? dictionary.getKey(key) : dictionary;
    return value.isInteger() ? value.getIntValueAsInt() : otherwise;
}

bool isTrue(QPDFObjectHandle dictionary, const char* key)
{
    QPDFObjectHandle value = dictionary.isDictionary() ? dictionary.getKey(key) : dictionary;
    return value.isBool() && value.getBoolValue();
}

/// Whether samples mean black where they would mean white; nothing for another mapping.
std::optional<bool> isInverted(QPDFObjectHandle decode)
{
    if (decode.isNull()) {
        return false;
    }
    if (!decode.isArray() || decode.getArrayNItems() != 2 || !decode.getArrayItem(0).isNumber() ||
        !decode.getArrayItem(1).isNumber()) {
        return std::nullopt;
    }
    const double first = decode.getArrayItem(0).getNumericValue();
    const double last = decode.getArrayItem(1).getNumericValue();
    return first == 0 && last == 1   ? std::optional<bool>(false)
           : first == 1 && last == 0 ? std::optional<bool>(true)
                                     : std::nullopt;
}

std::optional<Stored> storedAs(QPDFObjectHandle image)
{
    QPDFObjectHandle entries = image.getDict();
    if (entries.hasKey("/SMask") || entries.hasKey("/Mask") || isTrue(entries, "/ImageMask")) {
        return std::nullopt;
    }
    Stored stored;
    stored.width = integerAt(entries, "/Width", 0);
    stored.height = integerAt(entries, "/Height", 0);
    stored.channels = plainChannels(entries.getKey("/ColorSpace"));
    QPDFObjectHandle filter = only(entries.getKey("/Filter"));
    QPDFObjectHandle parameters = only(entries.getKey("/DecodeParms"));
    if (filter.isNameAndEquals("/DCTDecode")) {
        const bool isPlain = entries.getKey("/Decode").isNull() &&
                             integerAt(parameters, "/ColorTransform", -1) == -1;
        return isPlain && stored.channels > 0 ? std::optional<Stored>(stored) : std::nullopt;
    }
    const std::optional<bool> inverted = isInverted(entries.getKey("/Decode"));
    if (!filter.isNameAndEquals("/CCITTFaxDecode") || stored.channels != 1 || !inverted ||
        integerAt(parameters, "/Columns", 1728) != stored.width ||
        isTrue(parameters, "/EncodedByteAlign")) {
        return std::nullopt;
    }
    stored.kind = Stored::Kind::Fax;
    stored.fax = {integerAt(parameters, "/K", 0), stored.width, stored.height,
                  *inverted != isTrue(parameters, "/BlackIs1")};
    return stored;
}

/// How far an image on a page can be reduced; nothing where it is too coarse or distorted.
std::optional<pictures::Reduction> reductionOf(const Stored& stored, const Placed& place,
                                               double unit)
{
    double width = (place.right - place.left) * unit / pointsPerInch;
    double height = (place.top - place.bottom) * unit / pointsPerInch;
    if (!place.isUpright) {
        std::swap(width, height);
    }
    const double across = stored.width / width;
    const double down = stored.height / height;
    constexpr double mostDistorted = 1.2;
    if (!(std::max(across, down) < mostDistorted * std::min(across, down)) ||
        std::min(across, down) < leastDpi) {
        return std::nullopt;
    }
    int divisor = 8;
    while (std::min(across, down) / divisor < leastDpi) {
        divisor /= 2;
    }
    return pictures::Reduction{divisor, std::sqrt(across * down) / divisor};
}

std::optional<pictures::Raster> decoded(QPDFObjectHandle image, const Stored& stored,
                                        const pictures::Reduction& reduction,
                                        const pictures::Enough& enough)
{
    const Result<viewer::Viewer*> viewer = viewer::loadedViewer();
    if (!viewer) {
        return std::nullopt;
    }
    const auto data = image.getRawStreamData();
    const std::string bytes(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
    if (stored.kind == Stored::Kind::Fax) {
        return (*viewer)->reducedFax(bytes, stored.fax, reduction, enough);
    }
    std::optional<pictures::Raster> picture = (*viewer)->reducedJpeg(bytes, reduction, enough);
    const int width = (stored.width + reduction.divisor - 1) / reduction.divisor;
    if (picture && (picture->channels() != stored.channels || picture->width != width)) {
        return std::nullopt; // the file is not what the document says
    }
    return picture;
}

} // namespace

ScannedPicture scannedPicture(Document& document, int page, const content::PaintedContent& painted,
                              const pictures::Enough& enough)
{
    if (painted.images.size() != 1 || painted.paintsMore || painted.altersImages ||
        !QPDFObjectHandle(painted.images.front().stream).isStream()) {
        return {};
    }
    content::PaintedImage image = painted.images.front();
    const std::optional<Placed> place = placed(image);
    const std::optional<Stored> stored = storedAs(image.stream);
    if (!place || !stored || stored->width < 1 || stored->height < 1 ||
        !covers(*place, page_boxes::box(document, page, page_boxes::Box::Crop))) {
        return {};
    }
    const auto reduction = reductionOf(*stored, *place, page_boxes::userUnit(document, page));
    if (!reduction) {
        return {};
    }
    ScannedPicture scanned{decoded(image.stream, *stored, *reduction, enough)};
    scanned.isDamaged = !scanned.picture;
    return scanned;
}

} // namespace karvel::rendering
