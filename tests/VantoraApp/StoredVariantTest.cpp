#include "VantoraApp/StoredVariant.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QLine>
#include <QtCore/QRect>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtGui/QPolygon>

#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

/// A value as QSettings encodes it.
QByteArray encoded(const QVariant& value)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    stream << value;
    return bytes;
}

QVariantMap sample()
{
    return {{"byPageRangeTextEdit", "1,4-6"},
            {"empty", QString()},
            {"flag", true},
            {"number", -5},
            {"unsigned", 5u},
            {"long", std::numeric_limits<qint64>::min()},
            {"unsigned long", std::numeric_limits<quint64>::max()},
            {"real", 0.1},
            {"character", QChar(0x416)},
            {"texts", QStringList{"a", "", "c"}},
            {"no texts", QStringList()},
            {"values", QVariantList{QVariant(), "two", QVariantMap{{"three", 3}}}},
            {"hash", QVariantHash{{"a", 1}}},
            {"bytes", QByteArray("\0\xff", 2)},
            {"date", QDate(2024, 5, 21)},
            {"time", QTime(12, 30)},
            {"address", QUrl("https://example.org/a b")},
            {"rectangle", QRect(1, 2, 3, 4)},
            {"real rectangle", QRectF(1, 2, 3, 4)},
            {"size", QSize(5, 6)},
            {"line", QLine(1, 2, 3, 4)},
            {"point", QPointF(1.5, 2.5)},
            {"colour", QColor(1, 2, 3)},
            {"font", QFont("Sans", 12)}};
}

TEST(DecodeStoredVariant, GivesBackWhatOptionsAreMadeOf)
{
    const auto decoded = DecodeStoredVariant(encoded(sample()));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->type(), QVariant::Map);
    const QVariantMap map = decoded->toMap();
    EXPECT_EQ(map.keys(), sample().keys());
    for (const QString& key : map.keys())
        EXPECT_EQ(map.value(key), sample().value(key)) << key.toStdString();
}

TEST(DecodeStoredVariant, RefusesTypesThatItDoesNotKnow)
{
    const QByteArray registered = QByteArray("\0\0\0\x7f\0\0\0\x09SomeType\0", 17);
    const std::pair<const char*, QByteArray> rows[] = {
        {"a type by name", registered},
        {"a type by name in a map",
         encoded(QVariantMap{{"a", 1}}).replace(QByteArray("\0\0\0\x02\0\0\0\x01", 8), registered)},
        {"a polygon", encoded(QPolygon(QRect(0, 0, 1, 1)))},
        {"a pointer", QByteArray("\0\0\0\x80\0\0\0\0", 8)},
        {"no number of a type", QByteArray("\xff\xff\xff\xff", 4)},
    };
    for (const auto& [name, bytes] : rows)
        EXPECT_FALSE(DecodeStoredVariant(bytes).has_value()) << name;
}

TEST(DecodeStoredVariant, RefusesSizesThatTheBytesCanNotHold)
{
    for (const char type : {'\x08', '\x09', '\x0a', '\x0b', '\x0c', '\x1c'}) {
        for (const char* count : {"\x7f\xff\xff\xff", "\xff\xff\xff\xfe", "\x10\x00\x00\x00"}) {
            const QByteArray bytes =
                QByteArray("\0\0\0", 3) + type + QByteArray(count, 4) + QByteArray(16, '\0');
            EXPECT_FALSE(DecodeStoredVariant(bytes).has_value()) << int(type);
        }
    }
}

TEST(DecodeStoredVariant, RefusesDepthWithoutEnd)
{
    QByteArray nested;
    for (int i = 0; i < 100000; ++i)
        nested += QByteArray("\0\0\0\x09\0\0\0\x01", 8);
    EXPECT_FALSE(DecodeStoredVariant(nested).has_value());
}

TEST(DecodeStoredVariant, RefusesBytesThatAreCutOrGoOn)
{
    const QByteArray whole = encoded(sample());
    EXPECT_FALSE(DecodeStoredVariant({}).has_value());
    EXPECT_FALSE(DecodeStoredVariant(whole + '\0').has_value());
    for (int length = 0; length < whole.size(); length += 7)
        EXPECT_FALSE(DecodeStoredVariant(whole.left(length)).has_value()) << length;
}

TEST(DecodeStoredVariant, SurvivesDamage)
{
    const QByteArray whole = encoded(sample());
    std::mt19937 source(7);
    const auto below = [&source](int end) {
        return std::uniform_int_distribution<>(0, end - 1)(source);
    };
    for (int i = 0; i < 20000; ++i) {
        QByteArray damaged = whole;
        for (int changes = 1 + below(4); changes > 0; --changes)
            damaged[below(damaged.size())] = static_cast<char>(below(256));
        DecodeStoredVariant(damaged);
    }
}

} // namespace
