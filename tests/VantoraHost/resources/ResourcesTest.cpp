#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtGui/QImage>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

const QString root = ":/Vantora/Resources/";

QString textOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return QString::fromUtf8(file.readAll());
}

/// Every name of an image or a page that the text holds, with whatever stands of its path.
QStringList namesIn(const QString& text)
{
    static const QRegularExpression name(R"([\w:/.-]*\w\.(?:png|html|svg|gif)\b)");
    QStringList names;
    for (auto found = name.globalMatch(text); found.hasNext();)
        names.append(found.next().captured());
    return names;
}

/// The names in the sources of programs and plug-ins, each with a file that has it.
QMap<QString, QString> namesInSources()
{
    QMap<QString, QString> names;
    for (const char* layer : {"VantoraApp", "VantoraActions", "VantoraHost"}) {
        QDirIterator files(QString(SOURCE_DIR "/") + layer, {"*.cpp", "*.h", "*.ui", "*.html"},
                           QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            for (const QString& name : namesIn(textOf(path)))
                names.insert(name, path);
        }
    }
    // The header's buttons name an image that isn't there to be rid of an inherited one.
    names.remove("none.png");
    return names;
}

/// Whether a host can find the image or page. Icons of tools and help pages are named without
/// their folders, and some of the other names are put behind the root in the code.
bool isCompiled(const QString& name)
{
    if (name.startsWith(":/"))
        return QFile::exists(name);
    return QFile::exists(root + name) || QFile::exists(root + "Tools/" + name) ||
           QFile::exists(root + "HelpFiles/" + name);
}

TEST(Resources, HoldEveryImageAndPageThatTheSourcesName)
{
    const QMap<QString, QString> names = namesInSources();
    for (auto name = names.begin(); name != names.end(); ++name)
        EXPECT_TRUE(isCompiled(name.key())) << qPrintable(name.value() + " names " + name.key());
}

TEST(Resources, AreLookedForInEveryKindOfSource)
{
    const QMap<QString, QString> names = namesInSources();
    for (const char* name :
         {":/Vantora/Resources/DialogShadow-BtmRight.png", ":/Vantora/Resources/msgBox_warning.png",
          ":/Vantora/Resources/HelpFiles/Page_removed.png", "Icons/App_icon_256x256.png",
          "Action_DeletePages.html", "Action_DeletePages_Disabled.png"})
        EXPECT_TRUE(names.contains(name)) << name;
    EXPECT_FALSE(isCompiled("Action_DeletePage.png"));
    EXPECT_FALSE(isCompiled(":/Vantora/Resources/Action_DeletePages.png"));
}

struct ImageRow {
    const char* name;
    QSize size;
    const char* place;
};

const ImageRow images[] = {
    {"Icons/App_icon_256x256.png", {256, 256}, "window icon"},
    {"VantoraHeader.png", {730, 30}, "header of a dialog in its first size"},
    {"DialogShadow-TopLeft.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-Top.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-TopRight.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-Left.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-Right.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-BtmLeft.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-Btm.png", {8, 8}, "frame around a dialog"},
    {"DialogShadow-BtmRight.png", {8, 8}, "frame around a dialog"},
    {"WinClose.png", {14, 14}, "button in the header"},
    {"WinClose_disabled.png", {14, 14}, "button in the header"},
    {"PaneActionList_extra.png", {20, 20}, "button in the header"},
    {"PaneActionList_disabled.png", {20, 20}, "button in the header"},
    {"Collection.png", {20, 20}, "button in the header"},
    {"Collection_disabled.png", {20, 20}, "button in the header"},
    {"PaneActionList_selected.png", {41, 42}, "icon button of a favourite"},
    {"PaneHelp_selected.png", {48, 42}, "icon of a message"},
    {"msgBox_info.png", {48, 42}, "icon of a message"},
    {"msgBox_warning.png", {48, 42}, "icon of a message"},
    {"msgBox_error.png", {48, 42}, "icon of a message"},
    {"Tools/Action_DeletePages.png", {128, 128}, "icon that favourites are made from"},
    {"Tools/Action_DeletePages_Selected.png", {128, 128}, "icon that favourites are made from"},
    {"Tools/Action_DeletePages_Disabled.png", {128, 128}, "icon that favourites are made from"},
};

TEST(Images, HaveTheSizeOfTheirPlace)
{
    for (const ImageRow& row : images)
        EXPECT_EQ(QImage(root + row.name).size(), row.size) << row.name << ", " << row.place;
}

bool isBlank(const QImage& image)
{
    const QRgb first = image.pixel(0, 0);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != first)
                return false;
    return true;
}

TEST(Images, ShowSomethingAndHaveATwinOfDoubleDensity)
{
    QDirIterator files(root, {"*.png"}, QDir::Files, QDirIterator::Subdirectories);
    int looked = 0;
    while (files.hasNext()) {
        const QString path = files.next();
        if (path.endsWith("@2x.png"))
            continue;
        SCOPED_TRACE(qPrintable(path));
        const QImage image(path);
        const QImage twin(QString(path).replace(".png", "@2x.png"));
        EXPECT_FALSE(isBlank(image));
        EXPECT_FALSE(isBlank(twin));
        EXPECT_EQ(twin.size(), image.size() * 2);
        EXPECT_EQ(twin.devicePixelRatio(), 2);
        ++looked;
    }
    EXPECT_GE(looked, static_cast<int>(std::size(images)));
}

TEST(Images, OfTheStatesOfAnIconDiffer)
{
    for (const QStringList& states :
         {QStringList{"Tools/Action_DeletePages.png", "Tools/Action_DeletePages_Selected.png",
                      "Tools/Action_DeletePages_Disabled.png"},
          QStringList{"Collection.png", "Collection_disabled.png"},
          QStringList{"WinClose.png", "WinClose_disabled.png"},
          QStringList{"PaneActionList_extra.png", "PaneActionList_disabled.png"}})
        for (int i = 1; i < states.size(); ++i)
            EXPECT_NE(QImage(root + states[i]), QImage(root + states[i - 1]))
                << qPrintable(states[i]);
}

/// The relative luminance of a colour (Web Content Accessibility Guidelines 2.1).
double luminance(QRgb colour)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) +
           0.0722 * linear(qBlue(colour));
}

double contrast(QRgb a, QRgb b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

TEST(Images, OfTheHeadersButtonsStandOutFromTheHeaderAndUnderThePointer)
{
    const QRgb grounds[] = {qRgb(147, 147, 147), qRgb(210, 210, 210)};
    for (const char* name : {"WinClose.png", "PaneActionList_extra.png", "Collection.png"}) {
        const QImage image(root + name);
        int drawn = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (qAlpha(pixel) < 255)
                    continue;
                ++drawn;
                // Graphical objects need a contrast of 3 to 1 (guideline 1.4.11).
                for (const QRgb ground : grounds)
                    ASSERT_GE(contrast(pixel, ground), 3) << name << " at " << x << ", " << y;
            }
        }
        EXPECT_GT(drawn, 10) << name;
    }
}

struct JoinRow {
    const char* corner;
    const char* side;
    QPoint step; ///< from the corner's cell to the side's
};

TEST(Shadows, OfCornersMeetThoseOfSides)
{
    const JoinRow rows[] = {
        {"TopLeft", "Top", {1, 0}},    {"TopLeft", "Left", {0, 1}},    {"TopRight", "Top", {-1, 0}},
        {"TopRight", "Right", {0, 1}}, {"BtmLeft", "Btm", {1, 0}},     {"BtmLeft", "Left", {0, -1}},
        {"BtmRight", "Btm", {-1, 0}},  {"BtmRight", "Right", {0, -1}},
    };
    for (const JoinRow& row : rows) {
        const QImage corner(root + "DialogShadow-" + row.corner + ".png");
        const QImage side(root + "DialogShadow-" + row.side + ".png");
        ASSERT_EQ(corner.size(), side.size());
        const int last = corner.width() - 1;
        for (int i = 0; i <= last; ++i) {
            const int along = row.step.x() + row.step.y() > 0 ? last : 0;
            const QPoint at = row.step.x() != 0 ? QPoint(along, i) : QPoint(i, along);
            EXPECT_NEAR(qAlpha(corner.pixel(at)), qAlpha(side.pixel(at)), 8)
                << row.corner << " to " << row.side << ", pixel " << i;
        }
    }
}

} // namespace
