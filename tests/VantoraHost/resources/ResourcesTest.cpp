#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
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

/// The names in the sources of windows and plug-ins, each with a file that has it.
QMap<QString, QString> namesInSources()
{
    QMap<QString, QString> names;
    for (const char* layer : {"VantoraApp", "VantoraActions", "VantoraHost/desktop"}) {
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
           QFile::exists(root + "HelpFiles/" + name) || QFile::exists(root + "Desktop/" + name);
}

TEST(Resources, HoldEveryImageAndPageThatTheSourcesName)
{
    const QMap<QString, QString> names = namesInSources();
    for (auto name = names.begin(); name != names.end(); ++name)
        EXPECT_TRUE(isCompiled(name.key())) << qPrintable(name.value() + " names " + name.key());
}

struct ImageRow {
    const char* place;
    QSize size;
    QStringList names;
};

const ImageRow images[] = {
    {"window icon", {256, 256}, {"Icons/App_icon_256x256"}},
    {"header of a dialog in its first size", {730, 30}, {"VantoraHeader"}},
    {"frame around a dialog",
     {8, 8},
     {"DialogShadow-TopLeft", "DialogShadow-Top", "DialogShadow-TopRight", "DialogShadow-Left",
      "DialogShadow-Right", "DialogShadow-BtmLeft", "DialogShadow-Btm", "DialogShadow-BtmRight"}},
    {"button that closes", {14, 14}, {"WinClose", "WinClose_disabled"}},
    {"button in the header", {20, 20}, {"PaneActionList_extra", "PaneActionList_disabled"}},
    {"button in the header", {20, 20}, {"Collection", "Collection_disabled"}},
    {"icon button of a favourite", {41, 42}, {"PaneActionList_selected"}},
    {"icon of a message",
     {48, 42},
     {"PaneHelp_selected", "msgBox_info", "msgBox_warning", "msgBox_error"}},
    {"icon that favourites are made from",
     {128, 128},
     {"Tools/Action_DeletePages", "Tools/Action_DeletePages_Selected",
      "Tools/Action_DeletePages_Disabled"}},
};

TEST(Images, HaveTheSizeOfTheirPlaceAndDifferInIt)
{
    for (const ImageRow& row : images) {
        QImage before;
        for (const QString& name : row.names) {
            const QImage image(root + name + ".png");
            EXPECT_EQ(image.size(), row.size) << qPrintable(name) << ", " << row.place;
            EXPECT_NE(image, before) << qPrintable(name) << ", " << row.place;
            before = image;
        }
    }
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
    EXPECT_GE(looked, 24);
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
                for (const QRgb ground : grounds)
                    ASSERT_GE(contrast(pixel, ground), 4.5) << name << " at " << x << ", " << y;
            }
        }
        EXPECT_GT(drawn, 10) << name;
    }
}

TEST(Images, OfMessagesHaveAnOutlineThatStandsOutFromWhite)
{
    for (const char* name :
         {"msgBox_info.png", "msgBox_warning.png", "msgBox_error.png", "PaneHelp_selected.png"}) {
        const QImage image(root + name);
        for (int y = 12; y < 32; ++y) {
            int x = 0;
            while (x < image.width() && qAlpha(image.pixel(x, y)) < 255)
                ++x;
            ASSERT_LT(x, image.width()) << name;
            EXPECT_GE(contrast(image.pixel(x, y), qRgb(255, 255, 255)), 4.5) << name << ", " << y;
        }
    }
}

} // namespace
