#include "VantoraApp/settings/StoredVariant.h"

#include "VantoraApp/settings/StoredPicture.h"

#include <QtCore/QBitArray>
#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QRegExp>
#include <QtCore/QRegularExpression>
#include <QtGui/QBitmap>
#include <QtGui/QBrush>
#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QPen>

#include <algorithm>
#include <type_traits>

namespace {

constexpr int maximumDepth = 32;
constexpr qint64 mostPixels = 16 * 1024 * 1024;

// The numbers of types in the stream, which are those of Qt 4.
enum StreamType : quint32 {
    InvalidType = 0,
    MapType = 8,
    ListType = 9,
    StringListType = 11,
    BitArrayType = 13,
    DateTimeType = 16,
    RegExpType = 27,
    HashType = 28,
    PixmapType = 65,
    BrushType = 66,
    IconType = 69,
    ImageType = 70,
    BitmapType = 73,
    PenType = 77,
    NamedType = 127,
};

/// A type whose own operator reads a bounded number of bytes or stops at the end of them. One that
/// begins with a number of elements makes room for them first: `leastBytesOfOne` says what each
/// takes in the stream at least.
struct PlainType {
    quint32 number;
    int type;
    int leastBytesOfOne = 0;
};

constexpr PlainType plainTypes[] = {
    {1, QMetaType::Bool},
    {2, QMetaType::Int},
    {3, QMetaType::UInt},
    {4, QMetaType::LongLong},
    {5, QMetaType::ULongLong},
    {6, QMetaType::Double},
    {7, QMetaType::QChar},
    {10, QMetaType::QString},
    {12, QMetaType::QByteArray},
    {14, QMetaType::QDate},
    {15, QMetaType::QTime},
    {16, QMetaType::QDateTime},
    {17, QMetaType::QUrl},
    {18, QMetaType::QLocale},
    {19, QMetaType::QRect},
    {20, QMetaType::QRectF},
    {21, QMetaType::QSize},
    {22, QMetaType::QSizeF},
    {23, QMetaType::QLine},
    {24, QMetaType::QLineF},
    {25, QMetaType::QPoint},
    {26, QMetaType::QPointF},
    {64, QMetaType::QFont},
    {67, QMetaType::QColor},
    {71, QMetaType::QPolygon, 8},
    {76, QMetaType::QKeySequence, 4},
    {78, QMetaType::QTextLength},
    {80, QMetaType::QMatrix},
    {81, QMetaType::QTransform},
    {82, QMetaType::QMatrix4x4},
    {83, QMetaType::QVector2D},
    {84, QMetaType::QVector3D},
    {85, QMetaType::QVector4D},
    {86, QMetaType::QQuaternion},
    {129, QMetaType::Long},
    {130, QMetaType::Short},
    {131, QMetaType::Char},
    {132, QMetaType::ULong},
    {133, QMetaType::UShort},
    {134, QMetaType::UChar},
    {135, QMetaType::Float},
    {137, QMetaType::SChar},
    {141, QMetaType::QRegularExpression},
    {142, QMetaType::QJsonValue},
    {143, QMetaType::QJsonObject},
    {144, QMetaType::QJsonArray},
    {145, QMetaType::QJsonDocument},
    {146, QMetaType::QByteArrayList, 4},
};

// What Qt 4 had no number for stands in the stream by its name.
constexpr PlainType namedTypes[] = {
    {NamedType, QMetaType::QUuid},
    {NamedType, QMetaType::QPolygonF, 16},
};

constexpr int otherTypes[] = {
    QMetaType::UnknownType,  QMetaType::QVariantMap, QMetaType::QVariantList,
    QMetaType::QVariantHash, QMetaType::QStringList, QMetaType::QBitArray,
    QMetaType::QRegExp,      QMetaType::QPixmap,     QMetaType::QBrush,
    QMetaType::QIcon,        QMetaType::QImage,      QMetaType::QBitmap,
    QMetaType::QPen,
};

bool IsKnown(int type)
{
    const auto isIt = [type](const PlainType& known) { return known.type == type; };
    return std::any_of(std::begin(plainTypes), std::end(plainTypes), isIt) ||
           std::any_of(std::begin(namedTypes), std::end(namedTypes), isIt) ||
           std::count(std::begin(otherTypes), std::end(otherTypes), type) > 0;
}

/// Whether the repetitions that a pattern asks for can be written out, as QRegExp does at once.
bool IsModest(const QString& pattern)
{
    constexpr int mostParts = 10000;
    double parts = pattern.size();
    static const QRegularExpression repetition("\\{\\s*(\\d*)\\s*,?\\s*(\\d*)");
    auto match = repetition.globalMatch(pattern);
    while (match.hasNext() && parts <= mostParts) {
        const QRegularExpressionMatch found = match.next();
        parts *= std::max({found.captured(1).toDouble(), found.captured(2).toDouble(), 1.0});
    }
    return parts <= mostParts;
}

class Decoder {
public:
    Decoder(const QByteArray& bytes, QStringList* refused)
        : bytes_(bytes), stream_(bytes), refused_(refused)
    {
        stream_.setVersion(QDataStream::Qt_4_0);
    }

    QVariant ReadVariant()
    {
        ++depth_;
        const QVariant value = depth_ > maximumDepth ? Fail() : ReadValue(Read<quint32>());
        --depth_;
        return value;
    }

    bool Failed() const { return stream_.status() != QDataStream::Ok; }
    bool AtEnd() const { return stream_.atEnd(); }

private:
    /// For what is refused; what is cut has another status.
    QVariant Fail()
    {
        stream_.setStatus(QDataStream::ReadCorruptData);
        return {};
    }

    /// For types whose own operator reads a bounded number of bytes or stops at the end of them.
    template <class T>
    T Read()
    {
        T value{};
        stream_ >> value;
        return value;
    }

    qint64 Position() const { return stream_.device()->pos(); }
    void GoTo(qint64 position) { stream_.device()->seek(position); }
    qint64 Available() const { return stream_.device()->bytesAvailable(); }

    /// A number of elements, 0 and a failure when there are not as many in the rest of the bytes.
    int ReadCount(int leastBytesOfOne)
    {
        const auto count = Read<quint32>();
        if (count > Available() / leastBytesOfOne) {
            stream_.setStatus(QDataStream::ReadPastEnd);
            return 0;
        }
        return static_cast<int>(count);
    }

    /// What is longer than the rest of the bytes isn't begun: room would be made for a megabyte of
    /// it.
    template <class Text>
    Text ReadText()
    {
        constexpr quint32 lengthOfNull = 0xffffffff;
        const qint64 start = Position();
        const auto length = Read<quint32>();
        if (length != lengthOfNull && length > Available()) {
            stream_.setStatus(QDataStream::ReadPastEnd);
            return {};
        }
        GoTo(start);
        return Read<Text>();
    }

    QVariant ReadStringList()
    {
        QStringList texts;
        for (int count = ReadCount(4); count > 0 && !Failed(); --count)
            texts << ReadText<QString>();
        return texts;
    }

    QVariant ReadList()
    {
        QVariantList values;
        for (int count = ReadCount(4); count > 0 && !Failed(); --count)
            values << ReadVariant();
        return values;
    }

    template <class Map>
    QVariant ReadMap()
    {
        Map values;
        for (int count = ReadCount(8); count > 0 && !Failed(); --count) {
            const auto key = ReadText<QString>();
            const qint64 start = Position();
            const QVariant value = ReadVariant();
            if (!Failed()) {
                values.insert(key, value);
            } else if (depth_ == 1 && stream_.status() == QDataStream::ReadCorruptData) {
                if (refused_ != nullptr)
                    refused_->append(key);
                ReadAfterRefused(start, count - 1, values);
                return values;
            }
        }
        return values;
    }

    /// Reads the entries that follow a value of unknown length in the outermost map: from the first
    /// place at which just as many as are missing fill the rest of the bytes. Where there is none,
    /// they are lost.
    template <class Map>
    void ReadAfterRefused(qint64 start, int count, Map& values)
    {
        constexpr int mostTries = 4096;
        constexpr int mostBytes = 64 * 1024; // that each try may go over
        const qint64 end = qMin<qint64>(bytes_.size(), start + mostTries);
        for (qint64 next = start + 4; count > 0 && next < end && bytes_.size() - start <= mostBytes;
             ++next) {
            GoTo(next);
            stream_.resetStatus();
            Map rest;
            // A depth from which a map within has no outermost one's ways.
            depth_ = 2;
            for (int left = count; left > 0 && !Failed() && effort_ > 0; --left, --effort_) {
                const auto key = ReadText<QString>();
                rest.insert(key, ReadVariant());
            }
            depth_ = 1;
            if (!Failed() && AtEnd() && rest.size() == count) {
                for (auto value = rest.cbegin(); value != rest.cend(); ++value)
                    values.insert(value.key(), value.value());
                return;
            }
        }
        stream_.resetStatus();
        GoTo(bytes_.size());
    }

    QVariant ReadBits()
    {
        const qint64 start = Position();
        if (Read<quint32>() / 8 > Available())
            return Fail();
        GoTo(start);
        return Read<QBitArray>();
    }

    QVariant ReadPlain(const PlainType& known)
    {
        if (known.leastBytesOfOne > 0) {
            const qint64 start = Position();
            ReadCount(known.leastBytesOfOne);
            GoTo(start);
        }
        QVariant value(known.type, nullptr);
        if (Failed() || !QMetaType::load(stream_, known.type, value.data()))
            return Fail();
        return value;
    }

    QVariant ReadNamed()
    {
        const auto name = ReadText<QByteArray>();
        for (const PlainType& known : namedTypes) {
            if (name == QByteArray(QMetaType::typeName(known.type)) + '\0')
                return ReadPlain(known);
        }
        return Fail();
    }

    /// A number, 0 for no picture, and a picture.
    QImage ReadImage()
    {
        if (Read<qint32>() == 0)
            return {};
        const qint64 start = Position();
        int length = 0;
        const auto image =
            ReadPicture(QByteArray::fromRawData(bytes_.constData() + start, bytes_.size() - start),
                        pixels_, length);
        if (!image) {
            Fail();
            return {};
        }
        pixels_ -= static_cast<qint64>(image->width()) * image->height();
        GoTo(start + length);
        return *image;
    }

    QVariant ReadAnyPicture(quint32 type)
    {
        const QImage image = ReadImage();
        const bool hasWindows =
            qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
        if (Failed() || type == ImageType || !hasWindows)
            return image;
        if (type == BitmapType)
            return QBitmap::fromImage(image);
        const QPixmap pixmap = QPixmap::fromImage(image);
        return type == IconType ? QVariant(QIcon(pixmap)) : QVariant(pixmap);
    }

    QBrush ReadBrush()
    {
        const qint64 start = Position();
        const int style = Read<quint8>();
        const auto colour = Read<QColor>();
        if (style > Qt::ConicalGradientPattern && style != Qt::TexturePattern)
            Fail(); // a value that the enumeration doesn't have
        if (style == Qt::TexturePattern) {
            QBrush brush(colour);
            brush.setTextureImage(ReadImage());
            return brush;
        }
        if (style >= Qt::LinearGradientPattern && style <= Qt::ConicalGradientPattern) {
            Read<qint32>();                        // the kind of gradient once more
            ReadCount(sizeof(double) + 1 + 5 * 2); // stops, each a place and a colour
        }
        if (Failed())
            return {};
        GoTo(start);
        return Read<QBrush>();
    }

    QVariant ReadPen()
    {
        const qint64 start = Position();
        Read<quint8>(); // style
        Read<double>(); // width
        if (ReadBrush().style() == Qt::TexturePattern)
            return Fail();
        Read<double>();            // limit of mitres
        ReadCount(sizeof(double)); // dashes and gaps
        if (Failed())
            return {};
        GoTo(start);
        return Read<QPen>();
    }

    QVariant ReadRegExp()
    {
        const auto pattern = ReadText<QString>();
        const auto sensitivity = Read<quint8>();
        const auto syntax = Read<quint8>();
        const auto minimal = Read<quint8>();
        if (Failed() || sensitivity > Qt::CaseSensitive || syntax > QRegExp::W3CXmlSchema11 ||
            !IsModest(pattern))
            return Fail();
        QRegExp expression(pattern, static_cast<Qt::CaseSensitivity>(sensitivity),
                           static_cast<QRegExp::PatternSyntax>(syntax));
        expression.setMinimal(minimal != 0);
        return expression;
    }

    QVariant ReadValue(quint32 type)
    {
        switch (type) {
        case InvalidType:
            ReadText<QString>(); // a null text follows
            return {};
        case MapType:
            return ReadMap<QVariantMap>();
        case HashType:
            return ReadMap<QVariantHash>();
        case ListType:
            return ReadList();
        case StringListType:
            return ReadStringList();
        case BitArrayType:
            return ReadBits();
        case RegExpType:
            return ReadRegExp();
        case ImageType:
        case PixmapType:
        case BitmapType:
        case IconType:
            return ReadAnyPicture(type);
        case BrushType:
            return ReadBrush();
        case PenType:
            return ReadPen();
        case NamedType:
            return ReadNamed();
        default:
            break;
        }
        for (const PlainType& known : plainTypes) {
            if (known.number == type)
                return ReadPlain(known);
        }
        return Fail();
    }

    const QByteArray bytes_;
    QDataStream stream_;
    QStringList* refused_;
    int depth_ = 0;
    qint64 pixels_ = mostPixels; ///< that pictures may still have
    int effort_ = 20000;         ///< entries that are still looked at behind a refused value
};

QByteArray Encoded(const QVariant& value, int version)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream << value;
    return bytes;
}

/// See KeepableVariant.
class Keeper {
public:
    explicit Keeper(QStringList& refused) : refused_(refused) {}

    QVariant Kept(const QVariant& value, const QString& name)
    {
        ++depth_;
        const QVariant kept = depth_ > maximumDepth ? Refuse(name) : KeptValue(value, name);
        --depth_;
        return kept;
    }

private:
    QVariant Refuse(const QString& name)
    {
        refused_ << name;
        return {};
    }

    QVariant KeptValue(const QVariant& value, const QString& name)
    {
        switch (value.userType()) {
        case QMetaType::QVariantMap:
            return KeptMap(value.toMap(), name);
        case QMetaType::QVariantHash:
            return KeptMap(value.toHash(), name);
        case QMetaType::QVariantList:
            return KeptList(value.toList(), name);
        default:
            break;
        }
        if (!IsKnown(value.userType()) || !DecodeStoredVariant(EncodeStoredVariant(value)))
            return Refuse(name);
        return value;
    }

    template <class Map>
    QVariant KeptMap(const Map& map, const QString& name)
    {
        Map kept;
        for (auto value = map.cbegin(); value != map.cend(); ++value) {
            const int before = refused_.size();
            const QVariant one = Kept(value.value(), name + '/' + value.key());
            if (one.isValid() || refused_.size() == before)
                kept.insert(value.key(), one);
        }
        return kept;
    }

    QVariant KeptList(const QVariantList& list, const QString& name)
    {
        QVariantList kept;
        for (const QVariant& value : list)
            kept << Kept(value, name + '/' + QString::number(kept.size()));
        return kept;
    }

    QStringList& refused_;
    int depth_ = 0;
};

} // namespace

std::optional<QVariant> DecodeStoredVariant(const QByteArray& bytes, QStringList* refused)
{
    Decoder decoder(bytes, refused);
    QVariant value = decoder.ReadVariant();
    if (decoder.Failed() || !decoder.AtEnd())
        return std::nullopt;
    return value;
}

std::optional<QVariant> DecodeStoredDateTime(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_6);
    quint32 type = 0;
    qint8 isNull = 0;
    qint64 day = 0;
    quint32 time = 0;
    qint8 kind = 0;
    stream >> type >> isNull >> day >> time >> kind;
    if (type != DateTimeType || kind < Qt::LocalTime || kind > Qt::TimeZone)
        return std::nullopt;
    if (kind == Qt::TimeZone) {
        // The name leads to a file: one of those for time zones.
        static const QRegularExpression zones("^[A-Za-z0-9_+-]+(/[A-Za-z0-9_+-]+)*$");
        QString zone;
        stream >> zone;
        if (!zones.match(zone).hasMatch())
            return std::nullopt;
    }
    stream.device()->seek(sizeof type + sizeof isNull);
    QDateTime value;
    stream >> value;
    if (stream.status() != QDataStream::Ok || !stream.atEnd())
        return std::nullopt;
    return value;
}

QByteArray EncodeStoredVariant(const QVariant& value)
{
    return Encoded(value, QDataStream::Qt_4_0);
}

QByteArray EncodeStoredDateTime(const QVariant& value)
{
    return Encoded(value, QDataStream::Qt_5_6);
}

QVariant KeepableVariant(const QVariant& value, const QString& name, QStringList& refused)
{
    return Keeper(refused).Kept(value, name);
}
