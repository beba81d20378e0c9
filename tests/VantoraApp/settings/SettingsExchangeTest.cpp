#include "VantoraApp/settings/SettingsFile.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QBitArray>
#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLine>
#include <QtCore/QLocale>
#include <QtCore/QRect>
#include <QtCore/QRegExp>
#include <QtCore/QRegularExpression>
#include <QtCore/QSettings>
#include <QtCore/QTimeZone>
#include <QtCore/QUrl>
#include <QtCore/QUuid>
#include <QtGui/QBitmap>
#include <QtGui/QBrush>
#include <QtGui/QFont>
#include <QtGui/QIcon>
#include <QtGui/QImage>
#include <QtGui/QKeySequence>
#include <QtGui/QPen>
#include <QtGui/QPixmap>
#include <QtGui/QPolygon>
#include <QtGui/QQuaternion>
#include <QtGui/QTextFormat>
#include <QtGui/QTransform>

#include <gtest/gtest.h>
#include <random>

namespace {

/// Random options, keys and texts, by a seed.
class Options {
public:
    explicit Options(unsigned seed) : source_(seed) {}

    int below(int end) { return std::uniform_int_distribution<>(0, end - 1)(source_); }

    QString text()
    {
        static const QStringList pieces{
            "a",      "F",      "7",      " ",          ",",       ";",
            "=",      "\"",     "\\",     "/",          "@",       "@Invalid()",
            "(",      ")",      "%",      "%41",        "[",       "]",
            "\n",     "\r",     "\t",     "\a",         "\x1f",    "\x7f",
            "\u00e9", "\u0416", "\u2028", "\U0001F600", "General", QString(QChar(0))};
        QString result("");
        for (int length = below(8); length > 0; --length)
            result += pieces.at(below(pieces.size()));
        return result;
    }

    /// As callers may choose them; some are the same to QSettings.
    QString key()
    {
        const QString chosen = text().remove(QChar(0)) + QString::number(below(50));
        return below(4) == 0 ? "DeletePages/" + chosen : chosen;
    }

    QVariantMap map(int depth = 0)
    {
        QVariantMap result;
        for (int count = below(8); count > 0; --count)
            result.insert(depth == 0 ? key() : text(), value(depth));
        return result;
    }

    QVariant value(int depth)
    {
        switch (below(10)) {
        case 0:
            return text();
        case 1:
            return depth > 2 ? QVariant() : QVariant(map(depth + 1));
        case 2:
            return depth > 2 ? QVariant() : QVariant(list(depth + 1));
        case 3: {
            QStringList texts;
            for (int count = below(4); count > 0; --count)
                texts << text();
            return texts;
        }
        case 4:
            return QVariantHash{{text(), below(9)}};
        default:
            return kinds().at(below(kinds().size()));
        }
    }

    /// One of each type at least.
    static const QVariantList& kinds();

private:
    QVariantList list(int depth)
    {
        QVariantList values;
        for (int count = below(4); count > 0; --count)
            values << value(depth);
        return values;
    }

    std::mt19937 source_;
};

QImage picture()
{
    QImage image(7, 5, QImage::Format_ARGB32);
    image.fill(QColor(200, 100, 50, 128));
    image.setPixelColor(2, 3, Qt::blue);
    return image;
}

/// As wide as its bytes, whose last bits would be any.
QBitmap stripes()
{
    static const uchar bits[] = {0xff, 0x0f, 0xf0};
    return QBitmap::fromData(QSize(8, 3), bits);
}

QBrush gradient()
{
    QLinearGradient colours(1, 2, 3, 4);
    colours.setColorAt(0.25, Qt::red);
    colours.setColorAt(0.75, Qt::green);
    return colours;
}

QPen dashedPen()
{
    QPen pen(gradient(), 2.5);
    pen.setDashPattern({3, 1.5, 2, 4});
    return pen;
}

const QVariantList& Options::kinds()
{
    static const QVariantList all{
        QVariant(),
        true,
        -5,
        5u,
        std::numeric_limits<qint64>::min(),
        std::numeric_limits<quint64>::max(),
        1.0 / 3,
        QVariant::fromValue(1.5f),
        QVariant::fromValue(-7L),
        QVariant::fromValue(7UL),
        QVariant::fromValue(short(-3)),
        QVariant::fromValue(ushort(3)),
        QVariant::fromValue(char('x')),
        QVariant::fromValue(uchar(200)),
        QVariant::fromValue(static_cast<signed char>(-100)),
        QChar(0x416),
        QByteArray("\0\1)\xff,;\"", 7),
        QVariant::fromValue(QByteArrayList{"a", QByteArray("\0", 1)}),
        QBitArray(11, true),
        QDate(2024, 5, 21),
        QTime(12, 30, 5, 7),
        QDateTime(QDate(2024, 5, 21), QTime(1, 2), Qt::UTC),
        QDateTime(QDate(2024, 5, 21), QTime(1, 2)),
        QDateTime(QDate(2024, 5, 21), QTime(1, 2), Qt::OffsetFromUTC, 3600),
        QUrl("https://example.org/a%20b?c"),
        QLocale("de_CH"),
        QUuid("{12345678-9abc-def0-1234-56789abcdef0}"),
        QRect(-1, 2, 3, 4),
        QRectF(1.5, 2, 3, 4),
        QSize(5, 6),
        QSizeF(5.5, 6),
        QLine(1, 2, 3, 4),
        QLineF(1, 2, 3, 4.5),
        QPoint(-1, 2),
        QPointF(1.5, 2.5),
        QRegExp("a{2,3}[b-d]*", Qt::CaseInsensitive, QRegExp::RegExp2),
        QRegularExpression("(a|b)+\\d{3}", QRegularExpression::CaseInsensitiveOption),
        QJsonValue(1.5),
        QJsonObject{{"a", QJsonArray{1, "b"}}},
        QJsonArray{1, QJsonObject{{"x", true}}},
        QJsonDocument(QJsonObject{{"a", 1}}),
        QColor(1, 2, 3, 4),
        QFont("Sans", 12, QFont::Bold),
        QBrush(Qt::red, Qt::Dense3Pattern),
        gradient(),
        QPen(Qt::blue, 1.5, Qt::DashLine),
        dashedPen(),
        QKeySequence("Ctrl+A, Ctrl+B"),
        QVariant::fromValue(QPolygon(QRect(0, 0, 3, 4))),
        QVariant::fromValue(QPolygonF(QRectF(0, 0, 3.5, 4))),
        QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9),
        QQuaternion(1, 2, 3, 4),
        QVector3D(1, 2, 3),
        QTextLength(QTextLength::PercentageLength, 50),
        picture(),
        QVariant(QPixmap::fromImage(picture())),
        QVariant(stripes()),
        QVariant(QIcon(QPixmap::fromImage(picture()))),
        QImage(),
        QVariant(QPixmap()),
    };
    return all;
}

/// A value with its type, in a form in which two can be compared, whatever they are.
QByteArray form(const QVariant& value)
{
    const QByteArray type = QByteArray(value.typeName()) + ": ";
    if (value.userType() == QMetaType::QBrush &&
        value.value<QBrush>().style() == Qt::TexturePattern)
        return type + form(value.value<QBrush>().textureImage());
    if (value.userType() == QMetaType::QIcon)
        return type + form(value.value<QIcon>().pixmap(7, 5).toImage());
    // Whether an empty text is null is no part of it.
    if (value.userType() == QMetaType::QString)
        return type + value.toString().toUtf8() + '.';
    if (value.userType() == QMetaType::QStringList || value.userType() == QMetaType::QVariantList) {
        QByteArrayList forms;
        for (const QVariant& one : value.toList())
            forms << form(one);
        return type + forms.join(", ");
    }
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << value;
    return type + bytes;
}

class SettingsExchange : public testing::Test {
protected:
    QString path(const char* name) const { return home.data() + '/' + name; }

    /// What QSettings reads in a file that it doesn't remember.
    QVariantMap asQSettings(const QString& file)
    {
        const QString copy = path("copy") + QString::number(copies++);
        EXPECT_TRUE(QFile::copy(file, copy));
        const QSettings settings(copy, QSettings::IniFormat);
        QVariantMap values;
        for (const QString& key : settings.allKeys())
            values.insert(key, settings.value(key));
        return values;
    }

    static void expectSame(const SettingsFile& file, const QVariantMap& expected)
    {
        EXPECT_EQ(file.Keys(), QStringList(expected.keys()));
        for (auto value = expected.cbegin(); value != expected.cend(); ++value) {
            QStringList refused;
            const auto read = file.Value(value.key(), &refused);
            ASSERT_TRUE(read.has_value()) << value.key().toStdString();
            EXPECT_EQ(refused, QStringList()) << value.key().toStdString();
            EXPECT_EQ(form(*read).toPercentEncoding().toStdString(),
                      form(value.value()).toPercentEncoding().toStdString())
                << value.key().toStdString();
        }
    }

    /// Lets each write the values and the other read them.
    void exchange(const QVariantMap& values)
    {
        const QString theirs = path("theirs") + QString::number(copies);
        {
            QSettings settings(theirs, QSettings::IniFormat);
            for (auto value = values.cbegin(); value != values.cend(); ++value)
                settings.setValue(value.key(), value.value());
        }
        if (!QFile::exists(theirs))
            ScratchHome::touch(theirs);
        const QVariantMap expected = asQSettings(theirs);
        const auto read = SettingsFile::Read(theirs);
        ASSERT_TRUE(read.has_value());
        expectSame(*read, expected);

        const SettingsWriting writing = WriteSettingsFile(path("ours"), values);
        EXPECT_TRUE(writing);
        EXPECT_EQ(writing.refused, QStringList());
        const QVariantMap given = asQSettings(path("ours"));
        const auto back = SettingsFile::Read(path("ours"));
        ASSERT_TRUE(back.has_value());
        expectSame(*back, given);
        expectSame(*back, expected);
    }

    ScratchHome home;
    int copies = 0;
};

TEST_F(SettingsExchange, KeepsAValueOfEachTypeAloneAndInAMapAndAList)
{
    for (const QVariant& value : Options::kinds()) {
        SCOPED_TRACE(value.typeName());
        exchange({{"alone", value},
                  {"map", QVariantMap{{"in", value}, {"other", 1}}},
                  {"list", QVariantList{1, value}},
                  {"list of one", QVariantList{value}}});
    }
}

TEST_F(SettingsExchange, KeepsKeysAsQSettingsDoes)
{
    for (const char* key : {"DeletePages/Input", "General/x", "/lead", "trail/", "a//b", "a/b/c",
                            "General", "%General/x", "[x]", "a=b", "a;b", "a\\b", "a%41",
                            "\u0416/\u00e9", " blanks ", "line\nend", "@x"}) {
        SCOPED_TRACE(key);
        exchange({{key, "value"}, {"other", 1}});
        const auto file = SettingsFile::Read(path("ours"));
        ASSERT_TRUE(file.has_value());
        EXPECT_TRUE(file->Contains(key));
        EXPECT_EQ(file->Value(key), QVariant("value"));
    }
}

TEST_F(SettingsExchange, KeepsAGroupThatQSettingsRenames)
{
    ASSERT_TRUE(WriteSettingsFile(path("ours"), {{"general/x", 1}}));
    EXPECT_EQ(asQSettings(path("ours")), (QVariantMap{{"general/x", "1"}}));
    EXPECT_EQ(SettingsFile::Read(path("ours"))->Value("general/x"), QVariant("1"));
}

TEST_F(SettingsExchange, KeepsRandomOptions)
{
    for (unsigned seed = 0; seed < 300 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Options options(seed);
        QVariantMap values;
        // Two names of one key would leave it to their order which value stays.
        for (int count = options.below(8); count > 0; --count) {
            const QString key = options.key().split('/', Qt::SkipEmptyParts).join('/');
            if (!key.isEmpty() && !key.startsWith("general", Qt::CaseInsensitive))
                values.insert(key, options.value(0));
        }
        exchange(values);
    }
}

} // namespace
