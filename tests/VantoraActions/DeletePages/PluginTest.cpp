#include "VantoraApp/interface/ActionInterface.h"

#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>
#include <QtCore/QProcess>
#include <QtCore/QSet>

#include <gtest/gtest.h>
#include <memory>

namespace {

/// The plug-in as the host loads it; unloaded after each case.
class DeletePagesPlugin : public testing::Test {
protected:
    ~DeletePagesPlugin() override
    {
        delete loader.instance();
        loader.unload();
    }

    CActionInterface* action()
    {
        auto* found = qobject_cast<CActionInterface*>(loader.instance());
        EXPECT_NE(found, nullptr) << loader.errorString().toStdString();
        return found;
    }

    QPluginLoader loader{DELETE_PAGES_PLUGIN};
};

TEST_F(DeletePagesPlugin, CarriesItsMetadata)
{
    const QJsonObject metadata = loader.metaData();
    EXPECT_EQ(metadata.value("IID").toString(), "org.karvel.vantora.deletepages");
    EXPECT_EQ(metadata.value("className").toString(), "DeletePages");
    EXPECT_EQ(metadata.value("version").toInt(), QT_VERSION & 0xFFFF00);
    EXPECT_TRUE(metadata.value("debug").isBool());
    EXPECT_TRUE(metadata.value("MetaData").toObject().isEmpty());

    // "archreq" is Qt's own since 5.13, and an empty "MetaData" is left out.
    const QSet<QString> known{"IID", "className", "version", "debug", "MetaData", "archreq"};
    for (const QString& key : metadata.keys())
        EXPECT_TRUE(known.contains(key)) << key.toStdString();
}

TEST_F(DeletePagesPlugin, AnswersCastsByItsThreeNames)
{
    QObject* root = loader.instance();
    ASSERT_NE(root, nullptr) << loader.errorString().toStdString();
    EXPECT_EQ(root->parent(), nullptr);

    void* const interface = qobject_cast<CActionInterface*>(root);
    EXPECT_EQ(root->qt_metacast("DeletePages"), root);
    EXPECT_EQ(root->qt_metacast("com.Karvel.Vantora.ActionInterface_1.0"), interface);
    EXPECT_EQ(root->qt_metacast("CActionInterface"), interface);
    EXPECT_NE(interface, nullptr);
    EXPECT_NE(interface, root) << "the interface is the second base";
    EXPECT_EQ(root->qt_metacast("QObject"), root);
    EXPECT_EQ(root->qt_metacast("AnotherAction"), nullptr);
    EXPECT_EQ(root->qt_metacast(nullptr), nullptr);
}

TEST_F(DeletePagesPlugin, HasOneRootObjectUntilThatIsDeleted)
{
    using Instance = QObject* (*)();
    QObject* first = loader.instance();
    ASSERT_NE(first, nullptr);
    QLibrary library(DELETE_PAGES_PLUGIN);
    const auto instance = reinterpret_cast<Instance>(library.resolve("qt_plugin_instance"));
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(loader.instance(), first);
    EXPECT_EQ(instance(), first);

    QPointer<QObject> watched(first);
    delete first;
    EXPECT_TRUE(watched.isNull());
    QObject* second = instance();
    ASSERT_NE(second, nullptr);
    EXPECT_STREQ(second->metaObject()->className(), "DeletePages");
    EXPECT_EQ(instance(), second);
    library.unload();
}

TEST_F(DeletePagesPlugin, TellsWhoItIs)
{
    EXPECT_EQ(action()->GetActionName(), "Delete Pages");
    EXPECT_EQ(action()->GetDisplayName(), "Delete Pages");
    EXPECT_EQ(action()->GetActionHelp(), "Action_DeletePages.html");
    EXPECT_EQ(action()->GetGroupName(), "Pages");
    EXPECT_EQ(action()->GetActionFlags(), 527);
    EXPECT_EQ(
        action()->GetDefaultIcon(),
        "Action_DeletePages.png#Action_DeletePages_Selected.png#Action_DeletePages_Disabled.png");
}

TEST_F(DeletePagesPlugin, LeavesItsTextsBehindWhenItIsUnloaded)
{
    const QString name = action()->GetActionName();
    delete loader.instance();
    ASSERT_TRUE(loader.unload());
    EXPECT_EQ(name, "Delete Pages");
}

TEST_F(DeletePagesPlugin, HasNothingToDoBeforeAndAfterARun)
{
    WorkProcInfoStruct empty{};
    for (WorkProcInfoStruct* record : {&empty, static_cast<WorkProcInfoStruct*>(nullptr)}) {
        EXPECT_EQ(action()->PreSequenceProc(record), 1);
        EXPECT_EQ(action()->PostSequenceProc(record), 1);
    }
}

/// The names of what a module defines, by the options of nm.
QStringList definedIn(const char* module, const QStringList& options)
{
    QProcess nm;
    nm.start(NM, options + QStringList{"--defined-only", "--format=posix", module});
    EXPECT_TRUE(nm.waitForFinished(-1));
    EXPECT_EQ(nm.exitCode(), 0) << nm.readAllStandardError().toStdString();

    QStringList names;
    for (const QByteArray& line : nm.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty())
            names.append(QString::fromLatin1(line.left(line.indexOf(' '))));
    }
    names.sort();
    return names;
}

TEST(DeletePagesModule, ExportsOnlyTheEntryPointsOfAPlugin)
{
    const QStringList names = definedIn(DELETE_PAGES_PLUGIN, {"--dynamic"});
    EXPECT_EQ(names, (QStringList{"qt_plugin_instance", "qt_plugin_query_metadata"}))
        << names.join(' ').toStdString();
}

TEST(DeletePagesModule, DependsOnNoLibraryForWindows)
{
    QProcess readelf;
    readelf.start(READELF, {"--dynamic", DELETE_PAGES_PLUGIN});
    ASSERT_TRUE(readelf.waitForFinished(-1));
    const QByteArray dynamic = readelf.readAllStandardOutput();
    EXPECT_TRUE(dynamic.contains("[libQt5Core.so.5]")) << dynamic.toStdString();
    for (const char* library : {"libVantoraApp", "Gui", "Widgets"})
        EXPECT_FALSE(dynamic.contains(library)) << library;
}

TEST(DeletePagesModule, HasNoCopyOfWhatIsSetForTheWholeProcess)
{
    const QStringList shared{
        "_ZN13CMsgBoxDialog13mGlobalParentE",       "_ZN6CUtils16mApplicationNameE",
        "_ZN6CUtils27mInstalationTypeCurrentUserE", "_ZN12CActionUtils12mNavBarLabelE",
        "_ZN12CActionUtils10mInfoLabelE",           "gCommandsList"};
    const QStringList exported = definedIn(SHARED_CODE, {"--dynamic"});
    const QStringList own = definedIn(DELETE_PAGES_PLUGIN, {});
    EXPECT_TRUE(own.contains("qt_plugin_instance")) << "the plug-in was built with its symbols";
    for (const QString& name : shared) {
        EXPECT_TRUE(exported.contains(name)) << name.toStdString();
        EXPECT_FALSE(own.contains(name)) << name.toStdString();
    }
}

} // namespace
