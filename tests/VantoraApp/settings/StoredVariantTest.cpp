#include "VantoraApp/settings/StoredVariant.h"

#include <QtCore/QDataStream>
#include <QtCore/QDateTime>
#include <QtCore/QEasingCurve>
#include <QtCore/QLine>
#include <QtCore/QRect>
#include <QtCore/QUrl>
#include <QtGui/QBrush>
#include <QtGui/QColor>
#include <QtGui/QFont>

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

/// An expression, which isn't made here.
QByteArray expression(const QString& pattern)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_0);
    stream << quint32(27) << pattern << quint8(1) << quint8(0) << quint8(0);
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
        {"a curve, which names a function by its address", encoded(QEasingCurve())},
        {"a cursor", QByteArray("\0\0\0\x4a\0\0", 6)},
        {"a pattern that would take all memory", expression("((a{999}){999}){999}")},
        {"a brush in a style that there isn't",
         encoded(QBrush(Qt::red)).replace(4, 1, QByteArray(1, 97))},
        {"a pointer", QByteArray("\0\0\0\x80\0\0\0\0", 8)},
        {"no number of a type", QByteArray("\xff\xff\xff\xff", 4)},
    };
    for (const auto& [name, bytes] : rows)
        EXPECT_FALSE(DecodeStoredVariant(bytes).has_value()) << name;
}

TEST(DecodeStoredVariant, TakesExpressionsThatRepeatLittle)
{
    for (const char* pattern : {"", "a{3}-\\d{2,4}", "[{]x{"})
        EXPECT_TRUE(DecodeStoredVariant(expression(pattern)).has_value()) << pattern;
}

TEST(DecodeStoredVariant, LeavesOnlyWhatItRefusesOutOfAMap)
{
    const QByteArray number("\0\0\0\x02\0\0\x30\x39", 8); // 12345
    const QByteArray registered = QByteArray("\0\0\0\x7f\0\0\0\x09SomeType\0and its bytes", 30);
    for (const char* key : {"a", "c", "e"}) {
        QVariantMap map{{"a", 1},
                        {"b", "two"},
                        {"c", QRect(1, 2, 3, 4)},
                        {"d", QVariantMap{{"in", 1}}},
                        {"e", ""}};
        map[key] = 12345;
        const QByteArray bytes = encoded(map).replace(number, registered);
        map.remove(key);
        QStringList refused;
        EXPECT_EQ(DecodeStoredVariant(bytes, &refused), std::optional<QVariant>(map)) << key;
        EXPECT_EQ(refused, QStringList(key));
    }
}

TEST(KeepableVariant, LeavesOutWhatCouldNotBeReadAgainAndNamesIt)
{
    QVariant deep = 1;
    for (int i = 0; i < 100; ++i)
        deep = QVariantList{deep};
    QStringList refused;
    const QVariantMap kept =
        KeepableVariant(QVariantMap{{"pointer", QVariant::fromValue<void*>(nullptr)},
                                    {"empty", QVariant()},
                                    {"list", QVariantList{1, QEasingCurve(), 3}},
                                    {"map", QVariantMap{{"curve", QEasingCurve()}, {"n", 1}}},
                                    {"deep", deep}},
                        "o", refused)
            .toMap();
    EXPECT_EQ(kept.keys(), (QStringList{"deep", "empty", "list", "map"}));
    EXPECT_EQ(kept["list"], QVariant(QVariantList{1, QVariant(), 3}));
    EXPECT_EQ(kept["map"], QVariant(QVariantMap{{"n", 1}}));
    EXPECT_TRUE(refused.value(0).startsWith("o/deep/0/0/")) << refused.join(' ').toStdString();
    EXPECT_EQ(refused.mid(1), (QStringList{"o/list/1", "o/map/curve", "o/pointer"}));
    EXPECT_TRUE(DecodeStoredVariant(encoded(kept)).has_value());
}

TEST(DecodeStoredVariant, RefusesSizesThatTheBytesCanNotHold)
{
    // maps, lists, texts, bytes, bits, polygons, keys
    for (const char type :
         {'\x08', '\x09', '\x0a', '\x0b', '\x0c', '\x0d', '\x1c', '\x47', '\x4c', '\x92'}) {
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
    for (int i = 0; i < 300; ++i) { // fuzz/settings tries more
        QByteArray damaged = whole;
        for (int changes = 1 + below(4); changes > 0; --changes)
            damaged[below(damaged.size())] = static_cast<char>(below(256));
        DecodeStoredVariant(damaged);
    }
}

} // namespace
