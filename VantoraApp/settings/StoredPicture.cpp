#include "VantoraApp/settings/StoredPicture.h"

#include <QtCore/QtEndian>

namespace {

constexpr int aroundData = 12; ///< a chunk's length, its name before its data, its checksum after
const QByteArray signature = "\x89PNG\r\n\x1a\n";

quint32 NumberAt(const QByteArray& bytes, int position)
{
    return qFromBigEndian<quint32>(bytes.constData() + position);
}

} // namespace

// ISO/IEC 15948, 5: a signature, then chunks from IHDR, which has the size, to IEND.
std::optional<QImage> ReadPicture(const QByteArray& bytes, qint64 mostPixels, int& length)
{
    if (!bytes.startsWith(signature))
        return std::nullopt;
    QByteArray picture = signature;
    QByteArray name;
    int position = signature.size();
    while (name != "IEND") {
        if (bytes.size() - position < aroundData)
            return std::nullopt;
        const quint32 size = NumberAt(bytes, position);
        if (size > static_cast<quint32>(bytes.size() - position - aroundData))
            return std::nullopt;
        const bool isFirst = name.isEmpty();
        name = bytes.mid(position + 4, 4);
        if (isFirst != (name == "IHDR") || (isFirst && size < 8))
            return std::nullopt;
        if (isFirst &&
            static_cast<quint64>(NumberAt(bytes, position + 8)) * NumberAt(bytes, position + 12) >
                static_cast<quint64>(mostPixels))
            return std::nullopt;
        const int chunk = static_cast<int>(size) + aroundData;
        if (name != "zTXt" && name != "iTXt")
            picture += bytes.mid(position, chunk);
        position += chunk;
    }
    const QImage image = QImage::fromData(picture, "PNG");
    if (image.isNull())
        return std::nullopt;
    length = position;
    return image;
}
