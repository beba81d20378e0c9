#include "VantoraApp/settings/SettingsFile.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRect>
#include <QtCore/QSettings>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class SettingsFileTest : public testing::Test {
protected:
    QString path() const { return home.data() + "/folder/file.ini"; }

    void put(const QByteArray& text) const
    {
        QDir().mkpath(QFileInfo(path()).path());
        ScratchHome::touch(path(), text);
    }

    QByteArray text() const { return ScratchHome::bytesOf(path()); }

    QStringList entries() const { return ScratchHome::entriesOf(QFileInfo(path()).path()); }

    std::optional<QVariant> read(const QString& key) const
    {
        const auto file = SettingsFile::Read(path());
        EXPECT_TRUE(file.has_value());
        return file ? file->Value(key) : std::nullopt;
    }

    ScratchHome home;
};

const QVariantMap sample{{"text", QString("ä;\"=, Ж\\ ")},
                         {"at", "@Variant(x)"},
                         {"empty", ""},
                         {"texts", QStringList{"a, b", "@c", ""}},
                         {"bytes", QByteArray("\0\1)\xff", 4)},
                         {"map", QVariantMap{{"byPageRangeTextEdit", "1,2"}, {"n", 1}}}};

TEST_F(SettingsFileTest, ReadsWhatItWroteAsQSettingsDoes)
{
    ASSERT_TRUE(WriteSettingsFile(path(), sample));
    EXPECT_EQ(entries(), QStringList{"file.ini"});
    const QSettings settings(path(), QSettings::IniFormat);
    EXPECT_EQ(settings.allKeys(), QStringList(sample.keys()));
    for (const QString& key : sample.keys()) {
        EXPECT_EQ(read(key), sample.value(key)) << key.toStdString();
        EXPECT_EQ(settings.value(key), sample.value(key)) << key.toStdString();
    }
}

TEST_F(SettingsFileTest, WritesNumbersAsTexts)
{
    ASSERT_TRUE(WriteSettingsFile(path(), {{"a", 0}, {"b", true}, {"c", 1.5}}));
    EXPECT_EQ(text(), "[General]\na=0\nb=true\nc=1.5\n");
    EXPECT_EQ(read("b")->toBool(), true);
}

TEST_F(SettingsFileTest, ReplacesAFileWholeOrUpdatesIt)
{
    put("[General]\na=1\nb=2\n[g]\nc=@Variant(\\0\\0\\0\\x7f)\n");
    ASSERT_TRUE(UpdateSettingsFile(path(), {{"b", 3}}));
    EXPECT_EQ(text(), "[General]\na=1\nb=3\n[g]\nc=@Variant(\\0\\0\\0\\x7f)\n");
    ASSERT_TRUE(WriteSettingsFile(path(), {{"b", 4}}));
    EXPECT_EQ(text(), "[General]\nb=4\n");
}

TEST_F(SettingsFileTest, KeepsTheLinkAndThePermissionsOfAFileThatItUpdates)
{
    put("[General]\na=1\n");
    QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner);
    const QString link = home.data() + "/link";
    ASSERT_TRUE(QFile::link(path(), link));
    ASSERT_TRUE(UpdateSettingsFile(link, {{"b", 2}}));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(text(), "[General]\na=1\nb=2\n");
    EXPECT_EQ(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TEST_F(SettingsFileTest, WritesNothingWhereItCanNotWriteAllOfIt)
{
    EXPECT_FALSE(WriteSettingsFile("/proc/self/file.ini", sample));
    EXPECT_FALSE(WriteSettingsFile(home.data() + "/" + QString(300, 'n'), sample));
    EXPECT_FALSE(WriteSettingsFile("/dev/null/file.ini", sample));

    QDir().mkpath(path() + "/inside");
    EXPECT_FALSE(WriteSettingsFile(path(), sample)) << "a folder";
    EXPECT_FALSE(UpdateSettingsFile(path(), sample)) << "a folder";
    EXPECT_EQ(entries(), QStringList{"file.ini"});
}

TEST_F(SettingsFileTest, DoesNotUpdateAFileThatWouldSwallowTheNewValues)
{
    for (const char* damaged : {"[General]\na=\"open", "[General]\na=1\\"}) {
        put(damaged);
        EXPECT_FALSE(UpdateSettingsFile(path(), {{"b", 2}})) << damaged;
        EXPECT_EQ(text(), damaged);
    }
}

TEST_F(SettingsFileTest, NeedsNoFolderButTheTargets)
{
    home.set("TMPDIR", "/nonexistent");
    EXPECT_TRUE(WriteSettingsFile(path(), sample));
    EXPECT_TRUE(UpdateSettingsFile(path(), {{"text", "other"}}));
    EXPECT_EQ(read("text"), QVariant("other"));
    EXPECT_EQ(read("map"), sample.value("map"));
}

TEST_F(SettingsFileTest, LosesOnlyTheValuesThatItCanNotKeepAndNamesThem)
{
    const QVariant refused = QVariant::fromValue<void*>(nullptr);
    const SettingsWriting writing =
        WriteSettingsFile(path(), {{"a", 1},
                                   {"pointer", refused},
                                   {"map", QVariantMap{{"in", refused}, {"b", 2}}},
                                   {"/", 3}});
    EXPECT_TRUE(writing);
    EXPECT_EQ(writing.refused, (QStringList{"/", "map/in", "pointer"}));
    EXPECT_EQ(read("a"), QVariant("1"));
    EXPECT_EQ(read("map"), QVariant(QVariantMap{{"b", 2}}));
    EXPECT_FALSE(read("pointer").has_value());

    put("k=@Variant(\\0\\0\\0\\b\\0\\0\\0\\x1\\0\\0\\0\\x2\\0z\\0\\0\\0\\x7f\\0\\0\\0\\x2Q\\0)\n");
    QStringList names;
    EXPECT_EQ(SettingsFile::Read(path())->Value("k", &names), QVariant(QVariantMap()));
    EXPECT_EQ(names, QStringList{"k/z"});
}

TEST_F(SettingsFileTest, WritesNothingThatItWouldNotRead)
{
    ASSERT_TRUE(WriteSettingsFile(path(), {{"a", 1}}));
    const QByteArray before = text();
    const QVariantMap large{{"text", QString(SettingsFile::maximumSize, 'x')}};
    for (const auto write : {WriteSettingsFile, UpdateSettingsFile}) {
        const SettingsWriting writing = write(path(), large);
        EXPECT_FALSE(writing);
        EXPECT_EQ(writing.refused, QStringList{"text"});
    }
    EXPECT_EQ(text(), before);
    const int overhead = QByteArray("[General]\ntext=\n").size();
    EXPECT_TRUE(WriteSettingsFile(
        path(), {{"text", QString(int(SettingsFile::maximumSize) - overhead, 'x')}}));
    EXPECT_TRUE(SettingsFile::Read(path()).has_value());
}

TEST_F(SettingsFileTest, WritesThroughALinkWhereTheUserNamesTheFile)
{
    put("[General]\na=1\n");
    QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner);
    const QString link = home.data() + "/link";
    ASSERT_TRUE(QFile::link(path(), link));
    ASSERT_TRUE(WriteNamedSettingsFile(link, {{"b", 2}}));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(text(), "[General]\nb=2\n");
    EXPECT_EQ(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther), 0);

    QFile::remove(path());
    EXPECT_TRUE(WriteNamedSettingsFile(link, {{"b", 3}})) << "a link to no file yet";
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(text(), "[General]\nb=3\n");
}

struct DamagedRow {
    const char* name;
    QByteArray text;
};

TEST_F(SettingsFileTest, TakesWhatItCanNotUnderstandForAbsent)
{
    const DamagedRow rows[] = {
        {"an open parenthesis", "k=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x1"},
        {"cut", "k=@Variant(\\0\\0\\0\\x2\\0)"},
        {"an unregistered type", "k=@Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)"},
        {"by an escaped sign", "k=\\x40Variant(\\0\\0\\0\\x7f\\0\\0\\0\\bUnknown\\0)"},
        {"another encoding", "k=@DateTime(\\0\\0\\0\\x10\\0\\0\\0\\0)"},
        {"an unknown encoding", "k=@Other()"},
        {"in a list", "k=a, @Variant(\\0\\0\\0\\x7f)"},
        {"another key", "l=1"},
    };
    for (const DamagedRow& row : rows) {
        put("[General]\nother=kept\n" + row.text + '\n');
        EXPECT_FALSE(read("k").has_value()) << row.name;
        EXPECT_EQ(read("other"), QVariant("kept")) << row.name;
    }
}

TEST_F(SettingsFileTest, TellsWhyAFileCanNotBeRead)
{
    const auto reason = [](const QString& file) { return SettingsFile::Read(file).error(); };
    EXPECT_EQ(reason(home.data() + "/none"), "There is no such file.");
    EXPECT_EQ(reason(home.data()), "This is not a file.");

    const QString pipe = home.data() + "/pipe";
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe), 0600), 0);
    EXPECT_EQ(reason(pipe), "This is not a file.");

    put(QByteArray(SettingsFile::maximumSize, 'a'));
    EXPECT_TRUE(SettingsFile::Read(path()).has_value());
    put(QByteArray(SettingsFile::maximumSize + 1, 'a'));
    EXPECT_EQ(reason(path()), "The file is too large.");
}

} // namespace
