#include "VantoraApp/StoredVariant.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QLine>
#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QFont>

namespace {

constexpr int maximumDepth = 32;

// The numbers of types in the stream, which are those of Qt 4.
enum StreamType : quint32 {
    InvalidType = 0,
    BoolType = 1,
    IntType = 2,
    UIntType = 3,
    LongLongType = 4,
    ULongLongType = 5,
    DoubleType = 6,
    CharType = 7,
    MapType = 8,
    ListType = 9,
    StringType = 10,
    StringListType = 11,
    ByteArrayType = 12,
    DateType = 14,
    TimeType = 15,
    DateTimeType = 16,
    UrlType = 17,
    RectType = 19,
    RectFType = 20,
    SizeType = 21,
    SizeFType = 22,
    LineType = 23,
    LineFType = 24,
    PointType = 25,
    PointFType = 26,
    HashType = 28,
    FontType = 64,
    ColorType = 67,
};

class Decoder {
public:
    explicit Decoder(const QByteArray& bytes) : mStream(bytes)
    {
        mStream.setVersion(QDataStream::Qt_4_0);
    }

    QVariant ReadVariant()
    {
        if (++mDepth > maximumDepth)
            return Fail();
        const QVariant value = ReadValue(Read<quint32>());
        --mDepth;
        return value;
    }

    bool Failed() const { return mStream.status() != QDataStream::Ok; }
    bool AtEnd() const { return mStream.atEnd(); }

private:
    QVariant Fail()
    {
        mStream.setStatus(QDataStream::ReadCorruptData);
        return {};
    }

    /// For types whose own operator reads a bounded number of bytes or stops at the end of them.
    template <class T>
    T Read()
    {
        T value{};
        mStream >> value;
        return value;
    }

    /// A number of elements, 0 and a failure when there are not as many in the rest of the bytes.
    int ReadCount(int leastBytesOfOne)
    {
        const auto count = Read<quint32>();
        if (count > mStream.device()->bytesAvailable() / leastBytesOfOne) {
            Fail();
            return 0;
        }
        return static_cast<int>(count);
    }

    QVariant ReadStringList()
    {
        QStringList texts;
        for (int count = ReadCount(4); count > 0 && !Failed(); --count)
            texts << Read<QString>();
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
            const auto key = Read<QString>();
            values.insert(key, ReadVariant());
        }
        return values;
    }

    QVariant ReadValue(quint32 type)
    {
        switch (type) {
        case InvalidType:
            Read<QString>(); // a null text follows
            return {};
        case BoolType:
            return Read<bool>();
        case IntType:
            return Read<int>();
        case UIntType:
            return Read<quint32>();
        case LongLongType:
            return Read<qint64>();
        case ULongLongType:
            return Read<quint64>();
        case DoubleType:
            return Read<double>();
        case CharType:
            return Read<QChar>();
        case MapType:
            return ReadMap<QVariantMap>();
        case HashType:
            return ReadMap<QVariantHash>();
        case ListType:
            return ReadList();
        case StringType:
            return Read<QString>();
        case StringListType:
            return ReadStringList();
        case ByteArrayType:
            return Read<QByteArray>();
        case UrlType:
            return Read<QUrl>();
        case FontType:
            return Read<QFont>();
        case ColorType:
            return Read<QColor>();
        default:
            return ReadDateOrShape(type);
        }
    }

    QVariant ReadDateOrShape(quint32 type)
    {
        switch (type) {
        case DateType:
            return Read<QDate>();
        case TimeType:
            return Read<QTime>();
        case DateTimeType:
            return Read<QDateTime>();
        case RectType:
            return Read<QRect>();
        case RectFType:
            return Read<QRectF>();
        case SizeType:
            return Read<QSize>();
        case SizeFType:
            return Read<QSizeF>();
        case LineType:
            return Read<QLine>();
        case LineFType:
            return Read<QLineF>();
        case PointType:
            return Read<QPoint>();
        case PointFType:
            return Read<QPointF>();
        default:
            return Fail();
        }
    }

    QDataStream mStream;
    int mDepth = 0;
};

} // namespace

std::optional<QVariant> DecodeStoredVariant(const QByteArray& bytes)
{
    Decoder decoder(bytes);
    QVariant value = decoder.ReadVariant();
    if (decoder.Failed() || !decoder.AtEnd())
        return std::nullopt;
    return value;
}
