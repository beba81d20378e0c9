#include "VantoraApp/settings/IniText.h"

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>
#include <random>

namespace {

/// Whether QSettings gives the value of the key, which it refuses to do for some empty names.
bool isNamed(const QString& key)
{
    return !key.isEmpty() && !key.startsWith('/') && !key.endsWith('/') && !key.contains("//");
}

QMap<QString, QStringList> namedValuesOf(const QByteArray& text)
{
    QMap<QString, QStringList> values = IniText(text).values();
    for (const QString& key : values.keys()) {
        if (!isNamed(key))
            values.remove(key);
    }
    return values;
}

/// What QSettings makes of a text.
class AsQSettings {
public:
    explicit AsQSettings(const QByteArray& text) : settings_(write(text), QSettings::IniFormat) {}

    QMap<QString, QStringList> values() const
    {
        QMap<QString, QStringList> values;
        for (const QString& key : settings_.allKeys()) {
            if (isNamed(key))
                values[key] = settings_.value(key).toStringList();
        }
        return values;
    }

private:
    QString write(const QByteArray& text)
    {
        QFile file(folder_.filePath("settings.ini"));
        file.open(QIODevice::WriteOnly);
        file.write(text);
        return file.fileName();
    }

    QTemporaryDir folder_;
    QSettings settings_;
};

QString shown(const QMap<QString, QStringList>& values)
{
    QString result;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        result += '<' + value.key() + ">=<" + value->join("|") + "> ";
    return result;
}

const char* const texts[] = {
    "[General]\na=1\nb=two words\n",
    "a=outside any section\n[grp]\nb=1\n[General]\nc=2",
    "[%General]\na=a section called General\n[%41]\nb=1",
    "[a/b]\nc\\d=1\n[e\\f]\ng%20h=1\n%U0416=2\n%=3\n%4=4\n%zz=5\n%+4=6",
    "; a comment = 1\na=1 ; and \"another\nb=\";no comment\"\n;\nc=3",
    "a=  trimmed \t\nb=\"  kept \"  \nc= \"x\" y \nd=\\x20escaped\\x20",
    "a=1, 2 ,3\nb=\"1,2\", 3\nc=,\nd=\"\",\"\"\ne=one\\,two",
    "a=\\a\\b\\f\\n\\r\\t\\v\\\"\\?\\'\\\\\\q\\\nb=\\x41\\x416\\xg\\101\\8\\0z",
    "a=line\\\ncontinued\nb=\"over\nlines\"\nc=1\r\nd=2\r\re=3",
    "a=1\na=2\n[g]\na=3\n[General]\na=4",
    "no equals sign\n=no key\na==b=c\n  d  =  e\n",
    "[open\na=1\n[]\nb=2\n[ spaces ]\nc=3",
    "[General]\na=\xe4\xff",
    "\xef\xbb\xbf[General]\na=1",
    ("\xef\xbb\xbf[General]\na=\xc3\xa9, \xd0\x96 \\x416\xd0\x96 \xff\n\xc3\xa9=2\n[\xd0\x96]\n"
     "b=\"\xef\xbb\xbfq,\xc3\xa9\" \n"),
    "[General]\na=\xc3\xa9",
    "a\"=\"=1\nb\"=2",
    "a=\"open quote\nb=2",
    "a=backslash at the end\\",
    "",
    "\n\n\n",
};

TEST(IniText, ReadsTextsAsQSettingsDoes)
{
    for (const char* text : texts) {
        const auto expected = AsQSettings(text).values();
        EXPECT_EQ(namedValuesOf(text), expected)
            << text << "\nis " << shown(IniText(text).values()).toStdString() << "\nnot "
            << shown(expected).toStdString();
    }
}

TEST(IniText, ReadsDamagedTextsAsQSettingsDoes)
{
    const QByteArray pieces("ab=x\"\\,;\n\n[]% \t40\r");
    std::mt19937 source(20240521);
    const auto below = [&source](int end) {
        return std::uniform_int_distribution<>(0, end - 1)(source);
    };
    for (int i = 0; i < 1500; ++i) {
        QByteArray text = below(3) == 0 ? "[General]\n" : "";
        for (int length = below(30); length > 0; --length)
            text += pieces.at(below(pieces.size()));
        const auto expected = AsQSettings(text).values();
        ASSERT_EQ(namedValuesOf(text), expected)
            << text.toPercentEncoding(" []=,;").toStdString() << "\nis "
            << shown(IniText(text).values()).toStdString() << "\nnot "
            << shown(expected).toStdString();
    }
}

TEST(IniText, ReadsBlanksWithoutEnd)
{
    const QByteArray blanks(4 * 1024 * 1024, ' ');
    EXPECT_EQ(IniText(blanks + "a=1").values(), (QMap<QString, QStringList>{{"a", {"1"}}}));
    EXPECT_EQ(IniText("a" + blanks + "=1").values(), (QMap<QString, QStringList>{{"a", {"1"}}}));
    EXPECT_EQ(IniText("a=" + blanks + "1").values(), (QMap<QString, QStringList>{{"a", {"1"}}}));
    EXPECT_EQ(IniText("a=1" + blanks).values(), (QMap<QString, QStringList>{{"a", {"1"}}}));
    EXPECT_EQ(IniText(QByteArray(4 * 1024 * 1024, '\n') + "a=1").values().size(), 1);
}

struct LinesRow {
    const char* name;
    const char* before;
    const char* after;
    const char* key = "k";
};

TEST(IniText, TakesNewValuesIntoTheirGroups)
{
    const LinesRow rows[] = {
        {"an empty text", "", "[General]\nk=new\n"},
        {"other keys", "[General]\na=1\n", "[General]\na=1\nk=new\n"},
        {"no line end", "[General]\na=1", "[General]\na=1\nk=new\n"},
        {"the key itself", "[General]\na=1\nk=old\nz=2\n", "[General]\na=1\nz=2\nk=new\n"},
        {"the key over two lines", "[General]\nk=\"o\nld\"\nz=2\n", "[General]\nz=2\nk=new\n"},
        {"the key twice", "k=1\n[g]\nk=3\n[General]\nk=2\n", "[g]\nk=3\n[General]\nk=new\n"},
        {"a group after", "[General]\na=1\n\n[g]\nk=1\n", "[General]\na=1\nk=new\n\n[g]\nk=1\n"},
        {"only a group", "[g]\nk=1\n", "[General]\nk=new\n\n[g]\nk=1\n"},
        {"keys before any section", "a=1\n[g]\nk=1\n", "a=1\nk=new\n[g]\nk=1\n"},
        {"what isn't understood", "[General]\n???\n;note\nx=@Variant(?)\r\n",
         "[General]\n???\n;note\nx=@Variant(?)\r\nk=new\n"},
        {"a byte order mark", "\xef\xbb\xbf[g]\nk=1\n",
         "\xef\xbb\xbf[General]\nk=new\n\n[g]\nk=1\n"},
        {"a group of its own", "", "[g]\nk=new\n", "g/k"},
        {"a group after others", "[General]\na=1", "[General]\na=1\n\n[g]\nk=new\n", "g/k"},
        {"among those of its group", "[g]\na=1\nk=1\n\n[h]\nk=2\n", "[g]\na=1\nk=new\n\n[h]\nk=2\n",
         "g/k"},
        {"in the last part of a group that stands twice", "[g]\nk=1\n[h]\n[g]\na=1",
         "[g]\n[h]\n[g]\na=1\nk=new\n", "g/k"},
        {"below a group within its group", "[g/h]\nk=1\n", "[g/h]\n\n[g]\nh\\k=new\n", "g/h/k"},
        {"a group called General", "[General]\nk=1\n", "[General]\nk=1\n\n[%General]\nk=new\n",
         "General/k"},
    };
    for (const LinesRow& row : rows)
        EXPECT_EQ(IniText(row.before).with({{row.key, "new"}}).toStdString(), row.after)
            << row.name;
}

} // namespace
