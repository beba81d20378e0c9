#include "VantoraApp/CActionUtils.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>
#include <QtGui/QPainter>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

using Setup = std::function<void(QComboBox*)>;

const Setup colors = [](QComboBox* box) { CActionUtils::SetupColorPickerComboBox(box, true); };
const Setup colorsWithoutNone = [](QComboBox* box) {
    CActionUtils::SetupColorPickerComboBox(box, false);
};
const Setup lineStyles = CActionUtils::SetupLineStylePickerComboBox;
const Setup underlineStyles = CActionUtils::SetupUnderlineStylePickerComboBox;
const Setup lineWeights = CActionUtils::SetupLineWeightPickerComboBox;

QStringList texts(const QComboBox& box)
{
    QStringList all;
    for (int row = 0; row < box.count(); ++row)
        all.append(box.itemText(row));
    return all;
}

QIcon iconOf(const QComboBox& box, int row)
{
    return box.itemData(row, Qt::DecorationRole).value<QIcon>();
}

/// The swatch as it is drawn on a display of the density.
QImage swatch(const QComboBox& box, int row, int density = 1)
{
    QImage image(box.iconSize() * density, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(density);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    iconOf(box, row).paint(&painter, QRect(QPoint(0, 0), box.iconSize()));
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

QImage transparent(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

struct GeometryRow {
    const char* name;
    Setup setup;
    QSize iconSize;
    int rows;
    int rowHeight;
    int height;
    int maxVisible;
};

class PickerGeometry : public testing::TestWithParam<GeometryRow> {};

TEST_P(PickerGeometry, IsThatOfTheTableInALargeFontToo)
{
    const GeometryRow& row = GetParam();
    QComboBox box;
    QFont font = box.font();
    font.setPointSize(20);
    box.setFont(font);
    box.resize(150, 30);
    row.setup(&box);

    const auto* view = qobject_cast<QTableView*>(box.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(box.iconSize(), row.iconSize);
    EXPECT_EQ(view->iconSize(), row.iconSize);
    EXPECT_EQ(box.count(), row.rows);
    EXPECT_EQ(box.model()->columnCount(), 1);
    EXPECT_EQ(box.model()->parent(), nullptr);
    for (int i = 0; i < box.count(); ++i)
        EXPECT_EQ(view->rowHeight(i), row.rowHeight) << "row " << i;
    EXPECT_EQ(view->columnWidth(0), 148);
    EXPECT_EQ(view->minimumSize(), QSize(148, row.height));
    EXPECT_EQ(view->maximumSize(), QSize(148, row.height));
    EXPECT_TRUE(view->horizontalHeader()->isHidden());
    EXPECT_TRUE(view->verticalHeader()->isHidden());
    EXPECT_EQ(box.maxVisibleItems(), row.maxVisible);
    box.resize(300, 30);
    EXPECT_EQ(view->maximumWidth(), 148) << "the width is that of the setup";
}

TEST_P(PickerGeometry, IsReadableOnADarkDesktop)
{
    QPalette dark(Qt::white, Qt::black);
    dark.setColor(QPalette::HighlightedText, Qt::white);
    QComboBox box;
    box.setPalette(dark);
    GetParam().setup(&box);
    box.show();
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(1, 0));
    EXPECT_EQ(box.view()->palette().color(QPalette::Text), QColor(Qt::black));
    EXPECT_EQ(box.view()->palette().color(QPalette::HighlightedText), QColor(Qt::black));
    const QImage list = box.view()->grab().toImage();
    const int rowHeight = GetParam().rowHeight;
    EXPECT_EQ(list.pixelColor(120, rowHeight / 2), QColor(Qt::white));
    // The second row is selected; beside its swatch there is nothing lighter than its ground.
    int lightest = 0;
    for (int y = rowHeight + 2; y < 2 * rowHeight - 2; ++y)
        for (int x = 24; x < 140; ++x)
            lightest = std::max(lightest, qGray(list.pixel(x, y)));
    EXPECT_NEAR(lightest, qGray(QColor("lightblue").rgb()), 10);
    box.hidePopup();
}

constexpr int asByDefault = 10;

INSTANTIATE_TEST_SUITE_P(
    , PickerGeometry,
    testing::Values(GeometryRow{"colors", colors, {15, 15}, 12, 17, 204, 4},
                    GeometryRow{"colors_without_none", colorsWithoutNone, {15, 15}, 11, 17, 187, 4},
                    GeometryRow{"line_styles", lineStyles, {70, 14}, 5, 15, 75, asByDefault},
                    GeometryRow{"underline_styles", underlineStyles, {70, 16}, 7, 19, 133, 8},
                    GeometryRow{"line_weights", lineWeights, {30, 14}, 12, 15, 180, asByDefault}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_P(PickerGeometry, HasSwatchesThatAreSharpAtDoubleDensity)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QComboBox box;
    GetParam().setup(&box);
    for (int row = 0; row < box.count(); ++row) {
        if (iconOf(box, row).isNull())
            continue;
        const QImage single = swatch(box, row);
        EXPECT_NE(single, transparent(box.iconSize())) << "row " << row;
        EXPECT_TRUE(swatch(box, row, 2) == single.scaled(box.iconSize() * 2)) << "row " << row;
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
}

TEST_P(PickerGeometry, LivesAsLongAsItsComboBox)
{
    for (int i = 0; i < 50; ++i) {
        auto parent = std::make_unique<QWidget>();
        auto* box = new QComboBox(parent.get());
        GetParam().setup(box);
        const QPointer<QAbstractItemModel> model = box->model();
        const QPointer<QAbstractItemView> view = box->view();
        box->disconnect();
        EXPECT_NE(model, nullptr);
        GetParam().setup(box);
        EXPECT_NE(box->model(), model);
        box->setCurrentIndex(1);
        if (i == 0) {
            parent->show();
            box->showPopup();
            box->hidePopup();
        }
        parent.reset();
        EXPECT_EQ(model, nullptr);
        EXPECT_EQ(view, nullptr);
    }
}

struct ColorRow {
    int row;
    const char* text;
    QColor color;
};

const ColorRow colorRows[] = {
    {1, "Black", QColor(0, 0, 0)},      {2, "White", QColor(255, 255, 255)},
    {3, "Gray", QColor(160, 160, 164)}, {4, "Red", QColor(255, 0, 0)},
    {5, "Orange", QColor(255, 127, 0)}, {6, "Yellow", QColor(255, 255, 0)},
    {7, "Green", QColor(0, 255, 0)},    {8, "Cyan", QColor(0, 255, 255)},
    {9, "Blue", QColor(0, 0, 255)},     {10, "Fuchsia", QColor(255, 0, 255)},
};

/// A square of the colour with a black border of a pixel.
QImage framed(const QColor& color)
{
    QImage image(15, 15, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 15; ++y)
        for (int x = 0; x < 15; ++x)
            image.setPixelColor(x, y, x % 14 == 0 || y % 14 == 0 ? QColor(Qt::black) : color);
    return image;
}

TEST(ColorPicker, ListsNamesColorsAndSwatches)
{
    for (const bool withNone : {true, false}) {
        SCOPED_TRACE(withNone ? "with (none)" : "without (none)");
        QComboBox box;
        CActionUtils::SetupColorPickerComboBox(&box, withNone);
        const int before = withNone ? 0 : 1;
        for (const ColorRow& row : colorRows) {
            const int at = row.row - before;
            SCOPED_TRACE(row.text);
            EXPECT_EQ(box.itemText(at), row.text);
            EXPECT_EQ(box.itemData(at, Qt::UserRole + 1), QVariant(row.color));
            EXPECT_EQ(box.itemData(at, Qt::UserRole), QVariant());
            EXPECT_TRUE(swatch(box, at) == framed(row.color));
        }
        EXPECT_EQ(box.itemText(11 - before), "Custom...");
        EXPECT_EQ(box.itemData(11 - before, Qt::UserRole + 1), QVariant());
        EXPECT_EQ(box.itemData(11 - before, Qt::UserRole),
                  withNone ? QVariant(QColor(255, 255, 255, 255)) : QVariant());
        EXPECT_TRUE(swatch(box, 11 - before) == framed(Qt::white));
    }
}

TEST(ColorPicker, TranslatesRowsAndColorsBothWays)
{
    for (const ColorRow& row : colorRows) {
        EXPECT_EQ(CActionUtils::GetColorPickerColor(row.row), row.color) << row.text;
        EXPECT_EQ(CActionUtils::GetColorPickerIndex(row.color), row.row) << row.text;
    }
}

TEST(ColorPicker, AnswersBlackWhereThereIsNoColor)
{
    for (const int row : {0, 11, 12, -1, INT_MAX, INT_MIN})
        EXPECT_EQ(CActionUtils::GetColorPickerColor(row), QColor(0, 0, 0)) << row;
}

TEST(ColorPicker, CountsOtherColorsAsCustom)
{
    const QColor others[] = {QColor(255, 128, 0),     QColor(255, 127, 0, 254),    QColor(1, 0, 0),
                             QColor(160, 160, 160),   QColor(Qt::darkGray),        QColor(),
                             QColor(Qt::transparent), QColor::fromHsv(0, 255, 255)};
    for (const QColor& other : others)
        EXPECT_EQ(CActionUtils::GetColorPickerIndex(other), 11) << qPrintable(other.name());
}

TEST(UnderlineStylePicker, DrawsTheSingleLineBetweenItsEnds)
{
    QComboBox box;
    underlineStyles(&box);
    QImage line = transparent({70, 16});
    for (int x = 5; x <= 65; ++x)
        line.setPixelColor(x, 9, Qt::black);
    EXPECT_TRUE(swatch(box, 1) == line);
}

TEST(LinePickers, TellTheirRowsApart)
{
    for (const auto& setup : {lineStyles, underlineStyles, lineWeights}) {
        QComboBox box;
        setup(&box);
        for (int row = 2; row < box.count(); ++row) // some neighbouring weights look the same
            EXPECT_NE(swatch(box, row), swatch(box, row - 2)) << "row " << row;
    }
    QComboBox underlines;
    underlineStyles(&underlines);
    EXPECT_EQ(underlines.itemText(0), "(none)");
    EXPECT_EQ(underlines.itemData(0, Qt::DecorationRole), QVariant());
    QComboBox weights;
    lineWeights(&weights);
    EXPECT_EQ(texts(weights), QStringList({"0.1", "0.25", "0.5", "0.75", "1", "1.5", "2", "2.5",
                                           "3", "4", "5", "6"}));
}

TEST(StandardFonts, ReplaceWhatTheBoxHad)
{
    QComboBox box;
    box.addItem("before");
    CActionUtils::SetupStandardFontsComboBox(&box);
    EXPECT_EQ(texts(box), QStringList({"Arial", "Times New Roman", "Courier"}));
    EXPECT_EQ(box.itemData(0, Qt::DecorationRole), QVariant());
}

} // namespace
