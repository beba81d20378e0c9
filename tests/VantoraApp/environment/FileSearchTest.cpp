#include "VantoraApp/CActionUtils.h"

#include "tests/support/AsNobody.h"
#include "tests/support/ScratchHome.h"

#include <QtCore/QProcess>
#include <QtCore/QTextCodec>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class FileSearch : public testing::Test {
protected:
    QString root() const { return scratch.home(); }

    void create(const QStringList& files) const
    {
        for (const QString& file : files) {
            const QString path = root() + "/" + file;
            QDir().mkpath(QFileInfo(path).path());
            ScratchHome::touch(path);
        }
    }

    /// What the search finds, relative to the root.
    QStringList found(const QStringList& suffixes, bool recursive = true) const
    {
        QStringList paths = CActionUtils::SearchFilesInDir(root(), suffixes, recursive);
        for (QString& path : paths) {
            EXPECT_TRUE(path.startsWith(root() + "/")) << path.toStdString();
            path.remove(0, root().size() + 1);
        }
        return paths;
    }

    static int openDescriptors() { return QDir("/proc/self/fd").entryList(QDir::Files).size(); }

    ScratchHome scratch;
};

struct SearchRow {
    const char* sentence;
    QStringList files;
    QStringList suffixes;
    bool recursive;
    QStringList found;
};

class FileSearchOf : public FileSearch, public testing::WithParamInterface<SearchRow> {};

TEST_P(FileSearchOf, FindsFilesBySuffix)
{
    const SearchRow& row = GetParam();
    create(row.files);
    EXPECT_EQ(found(row.suffixes, row.recursive), row.found);
}

const QStringList mixed = {"b.pdf", "A.PDF", "a/x.pdf"};

INSTANTIATE_TEST_SUITE_P(
    , FileSearchOf,
    testing::Values(
        SearchRow{"a_tree", mixed, {"pdf"}, true, {"A.PDF", "a/x.pdf", "b.pdf"}},
        SearchRow{"one_folder", mixed, {"pdf"}, false, {"A.PDF", "b.pdf"}},
        SearchRow{"suffixes_in_any_case", mixed, {"Pdf"}, false, {"A.PDF", "b.pdf"}},
        SearchRow{"no_suffixes", mixed, {}, true, {}},
        SearchRow{"several_suffixes",
                  {"a.pdf", "b.txt", "c.doc"},
                  {"doc", "pdf"},
                  true,
                  {"a.pdf", "c.doc"}},
        SearchRow{"the_last_suffix_only", {"report.tar.gz"}, {"tar.gz", "tar"}, true, {}},
        SearchRow{"the_last_suffix", {"report.tar.gz"}, {"gz"}, true, {"report.tar.gz"}},
        SearchRow{"suffixes_with_a_dot", {"a.pdf"}, {".pdf"}, true, {}},
        SearchRow{"the_empty_suffix", {"name", "end.", "a.pdf"}, {""}, true, {"end.", "name"}},
        SearchRow{"hidden_files_and_folders", {".pdf", ".a.pdf", ".d/x.pdf"}, {"pdf"}, true, {}},
        SearchRow{"the_order_of_character_codes",
                  {"a.pdf", "B.pdf", "_.pdf", "b.pdf", "1.pdf", "10.pdf", "2.pdf", "a-b/x.pdf",
                   "a.b/x.pdf", "a/x.pdf"},
                  {"pdf"},
                  true,
                  {"1.pdf", "10.pdf", "2.pdf", "B.pdf", "_.pdf", "a/x.pdf", "a-b/x.pdf",
                   "a.b/x.pdf", "a.pdf", "b.pdf"}},
        SearchRow{"a_backslash_becomes_a_slash", {"d\\e/x\\y.pdf"}, {"pdf"}, true, {"d/e/x/y.pdf"}},
        SearchRow{"a_folder_with_the_suffix", {"d.pdf/x.txt"}, {"pdf"}, true, {}}),
    [](const auto& info) { return std::string(info.param.sentence); });

TEST_F(FileSearch, HandsOverWhatItFindsUntilNobodyWantsMore)
{
    create({"a/1.pdf", "b/2.pdf", "c/3.pdf"});
    QStringList names;
    QStringList unreadable;
    CActionUtils::SearchFilesInDir(root(), {"pdf"}, true, unreadable, [&](const QString& file) {
        names << QFileInfo(file).fileName();
        return names.size() < 2;
    });
    EXPECT_EQ(names, QStringList({"1.pdf", "2.pdf"}));
}

TEST_F(FileSearch, NeverFollowsLinks)
{
    create({"real/a.pdf"});
    QFile::link(root() + "/real/a.pdf", root() + "/link.pdf");
    QFile::link(root() + "/real", root() + "/linked");
    QFile::link(root(), root() + "/real/loop");
    QFile::link(root() + "/nowhere.pdf", root() + "/dangling.pdf");
    EXPECT_EQ(found({"pdf"}), QStringList{"real/a.pdf"});
}

TEST_F(FileSearch, StartsWhereALinkLeads)
{
    create({"real/a.pdf"});
    QFile::link(root() + "/real", root() + "/linked");
    EXPECT_EQ(CActionUtils::SearchFilesInDir(root() + "/linked", {"pdf"}, true),
              QStringList{root() + "/linked/a.pdf"});
}

TEST_F(FileSearch, LeavesOutWhatIsNoFile)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(root() + "/pipe.pdf").constData(), 0600), 0);
    EXPECT_EQ(found({"pdf"}), QStringList());
}

TEST_F(FileSearch, OfNoSuchFolderOrOfAFileIsEmpty)
{
    create({"a.pdf"});
    EXPECT_EQ(CActionUtils::SearchFilesInDir(root() + "/nowhere", {"pdf"}, true), QStringList());
    EXPECT_EQ(CActionUtils::SearchFilesInDir(root() + "/a.pdf", {"pdf"}, true), QStringList());
}

TEST_F(FileSearch, GivesAbsolutePathsForARelativeFolder)
{
    create({"sub/a.pdf"});
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root()));
    EXPECT_EQ(CActionUtils::SearchFilesInDir(QDir("sub"), {"pdf"}, true),
              QStringList{QDir::currentPath() + "/sub/a.pdf"});
    QDir::setCurrent(before);
}

TEST_F(FileSearch, LeavesTheCallersFolderAsItIsAndHonoursItsNameFilters)
{
    create({"a1.pdf", "b1.pdf", "a2/b.pdf"});
    QDir folder(root(), "a*", QDir::Time, QDir::Hidden);
    EXPECT_EQ(CActionUtils::SearchFilesInDir(folder, {"pdf"}, true),
              QStringList({root() + "/a1.pdf", root() + "/a2/b.pdf"}));
    EXPECT_EQ(folder.sorting(), QDir::Time);
    EXPECT_EQ(folder.filter(), QDir::Hidden);
}

TEST_F(FileSearch, PassesOverFoldersThatCannotBeReadAndNamesThemWhenAsked)
{
    create({"a/x.pdf", "listed/d/x.pdf", "locked/x.pdf", "z.pdf"});
    const auto mode = [&](const char* folder, mode_t bits) {
        chmod(QFile::encodeName(root() + folder).constData(), bits);
    };
    mode("/locked", 0);
    mode("/listed", 0444);
    mode("/..", 0755);
    {
        const support::AsNobody nobody;
        ASSERT_TRUE(nobody);
        const int before = openDescriptors();
        EXPECT_EQ(found({"pdf"}), QStringList({"a/x.pdf", "z.pdf"}));
        QStringList unreadable;
        CActionUtils::SearchFilesInDir(root(), {"pdf"}, true, unreadable);
        CActionUtils::SearchFilesInDir(root() + "/locked", {"pdf"}, false, unreadable);
        CActionUtils::SearchFilesInDir(root() + "/nowhere", {"pdf"}, false, unreadable);
        EXPECT_EQ(unreadable,
                  QStringList({root() + "/listed/d", root() + "/locked", root() + "/locked"}));
        EXPECT_EQ(openDescriptors(), before);
    }
    mode("/locked", 0700);
    mode("/listed", 0700);
}

TEST_F(FileSearch, PassesOverNamesThatAreNotText)
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    create({"a.pdf", QString::fromUtf8("\u00FCber.pdf"), "z/z.pdf"});
    const QByteArray bytes = QFile::encodeName(root());
    const auto raw = [&](const char* name) { return bytes + "/" + name; };
    ASSERT_EQ(mkdir(raw("b\xFF").constData(), 0700), 0);
    for (const char* name : {"b\xFF/x.pdf", "c\xC3.pdf", "\x80.pdf"}) {
        const int file = open(raw(name).constData(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(file, 0);
        close(file);
    }
    EXPECT_EQ(found({"pdf"}),
              QStringList({"a.pdf", "z/z.pdf", QString::fromUtf8("\u00FCber.pdf")}));
    for (const char* name : {"b\xFF/x.pdf", "c\xC3.pdf", "\x80.pdf"}) {
        unlink(raw(name).constData());
    }
    rmdir(raw("b\xFF").constData());
}

// Folders inside one another, called "dddddddddd" each, every hundredth beside a second folder, to
// which the search comes when it returns from below. The path of the last is longer than any call
// of the system takes, so they are made and removed one level at a time.
const char* const deepTree = "import os, sys\n"
                             "os.chdir(sys.argv[1])\n"
                             "for level in range(1, 5001):\n"
                             "    os.mkdir('dddddddddd')\n"
                             "    os.chdir('dddddddddd')\n"
                             "    if level % 100 == 0:\n"
                             "        os.mkdir('z')\n"
                             "        open('z/x.pdf', 'w').close()\n";

TEST_F(FileSearch, GoesDownAVeryDeepTreeAndComesBackWithFewDescriptors)
{
    ASSERT_EQ(QProcess::execute(PYTHON, {"-c", deepTree, root()}), 0);
    QStringList expected;
    for (int level = 5000; level >= 1; level -= 100)
        expected << QString("dddddddddd/").repeated(level) + "z/x.pdf";
    const int before = openDescriptors();
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit tight = {static_cast<rlim_t>(before + 32), limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &tight);
    EXPECT_EQ(found({"pdf"}), expected);
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(QProcess::execute("rm", {"-r", root() + "/dddddddddd"}), 0);
}

} // namespace
