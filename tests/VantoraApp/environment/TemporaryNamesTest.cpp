#include "VantoraApp/CUtils.h"

#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class TemporaryNames : public testing::Test {
protected:
    QString path(const QString& name) const { return scratch.temporary() + "/" + name; }

    QString newFile(QByteArray baseName) const { return CUtils::GetNewTempFile(baseName.data()); }

    /// Takes a new folder and checks that the two ways in which it is told agree.
    static QString newFolder(QString name)
    {
        const QDir folder = CUtils::GetNewTempFolder(&name);
        EXPECT_EQ(folder.path(), QDir(name).path());
        EXPECT_TRUE(folder.exists());
        EXPECT_TRUE(folder.isEmpty());
        return name;
    }

    ScratchHome scratch;
};

TEST_F(TemporaryNames, OfFoldersAreCountedFromZeroWhenTheNameIsTaken)
{
    EXPECT_EQ(newFolder("job"), path("job"));
    EXPECT_EQ(newFolder("job"), path("job_0"));
    EXPECT_EQ(newFolder("job"), path("job_1"));
    QDir(path("job_0")).removeRecursively();
    EXPECT_EQ(newFolder("job"), path("job_0"));
}

TEST_F(TemporaryNames, OfFoldersAreTakenAsTheyStandAndPassOverFiles)
{
    ScratchHome::touch(path("100%s %1 %d"));
    EXPECT_EQ(newFolder("100%s %1 %d"), path("100%s %1 %d_0"));
    EXPECT_EQ(newFolder("a/b/c"), path("a/b/c"));
}

TEST_F(TemporaryNames, OfFoldersFallBackToTheTemporaryFolder)
{
    ScratchHome::touch(path("file"));
    QString name = "file/below";
    const QDir folder = CUtils::GetNewTempFolder(&name);
    EXPECT_EQ(folder.path(), scratch.temporary());
    EXPECT_EQ(name, scratch.temporary() + "/");
}

TEST_F(TemporaryNames, OfFoldersEndWithTheLastNumberWhenAllAreTaken)
{
    // Links of a few files: a hundred thousand folders would take their time.
    const auto link = [&](const QString& file, const QString& name) {
        return ::link(QFile::encodeName(path(file)).constData(),
                      QFile::encodeName(path(name)).constData());
    };
    ScratchHome::touch(path("n"));
    for (int k = 0; k < 99999; ++k) {
        const QString file = "file" + QString::number(k / 10000);
        if (k % 10000 == 0) {
            ScratchHome::touch(path(file));
        }
        ASSERT_EQ(link(file, "n_" + QString::number(k)), 0);
    }
    QDir(scratch.temporary()).mkdir("n_99999");
    QString name = "n";
    CUtils::GetNewTempFolder(&name);
    EXPECT_EQ(name, path("n_99999"));
}

TEST_F(TemporaryNames, OfFilesAreTheFirstFreeOneAndNotCreated)
{
    EXPECT_EQ(newFile("x"), path("x_1.pdf"));
    EXPECT_FALSE(QFile::exists(path("x_1.pdf")));
    ScratchHome::touch(path("x_1.pdf"));
    ScratchHome::touch(path("x_2.pdf"));
    ScratchHome::touch(path("x_4.pdf"));
    EXPECT_EQ(newFile("x"), path("x_3.pdf"));
}

TEST_F(TemporaryNames, OfFilesTakeTheBaseNameAsUtf8WithSlashesAndWithoutFormatting)
{
    QDir(scratch.temporary()).mkdir("a");
    ScratchHome::touch(path(QString::fromUtf8("a/\u00DF %d %s_1.pdf")));
    EXPECT_EQ(newFile("a\\\xC3\x9F %d %s"), path(QString::fromUtf8("a/\u00DF %d %s_2.pdf")));
}

TEST_F(TemporaryNames, OfFilesAreEmptyWhenAllAreTaken)
{
    for (int n = 1; n <= 9999; ++n) {
        ScratchHome::touch(path("x_" + QString::number(n) + ".pdf"));
    }
    EXPECT_EQ(newFile("x"), QString());
    QFile::remove(path("x_9999.pdf"));
    EXPECT_EQ(newFile("x"), path("x_9999.pdf"));
}

} // namespace
