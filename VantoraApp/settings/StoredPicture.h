#pragma once

#include <QtCore/QByteArray>
#include <QtGui/QImage>

#include <optional>

/// The picture in a PNG file that stands at the beginning of the bytes; `length` is then the file's
/// length. Nothing for what is no PNG and for one of more than `mostPixels`. Compressed texts in
/// the file, which could be of any size, are passed over.
std::optional<QImage> ReadPicture(const QByteArray& bytes, qint64 mostPixels, int& length);
