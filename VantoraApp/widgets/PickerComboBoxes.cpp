#include "VantoraApp/CActionUtils.h"

#include <QtGui/QPainter>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableView>

#include <functional>
#include <iterator>

namespace {

struct NamedColor {
    const char* name;
    QColor color;
};

/// The colours of the picker, the first one's row being 1.
const NamedColor& NamedColorAt(int row)
{
    static const NamedColor colors[] = {
        {"Black", Qt::black},
        {"White", Qt::white},
        {"Gray", Qt::gray},
        {"Red", Qt::red},
        {"Orange", QColor(255, 127, 0)},
        {"Yellow", Qt::yellow},
        {"Green", Qt::green},
        {"Cyan", Qt::cyan},
        {"Blue", Qt::blue},
        {"Fuchsia", Qt::magenta},
    };
    return colors[row - 1];
}

constexpr int firstColorRow = 1;
constexpr int lastColorRow = 10;
constexpr int customColorRow = 11;

/// A list for a combo box, which does not take over its model. It is freed with the combo box.
class PickerList : public QObject {
public:
    explicit PickerList(QComboBox* combo) : QObject(combo) {}

    QStandardItemModel model;
};

/// A list whose swatches have the size of the combo box's icons.
QStandardItemModel& StartList(QComboBox* combo, const QSize& iconSize)
{
    combo->setIconSize(iconSize);
    return (new PickerList(combo))->model;
}

void AppendItem(QStandardItemModel& model, QStandardItem* item)
{
    model.setItem(model.rowCount(), 0, item);
}

/// Shows the model in a table without frame and headers, all of it at once.
void ShowList(QComboBox* combo, QStandardItemModel& model, int rowHeight)
{
    combo->setModel(&model);
    auto* view = new QTableView(combo);
    combo->setView(view);
    view->horizontalHeader()->hide();
    view->verticalHeader()->hide();
    view->verticalHeader()->setMinimumSectionSize(rowHeight);
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->setIconSize(combo->iconSize());
    const int width = combo->width() - 2;
    view->setColumnWidth(0, width);
    view->setFixedWidth(width);
    view->setFixedHeight(model.rowCount() * rowHeight);
    // The list stands on white and light blue whatever the desktop's colours are.
    QPalette palette = view->palette();
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    view->setPalette(palette);
    view->setStyleSheet("QTableView {gridline-color: white; background-color: white; "
                        "selection-background-color: lightblue;}");
}

/// All edges in a swatch lie between pixels: doubled, its pixels are the same drawing for displays
/// of double density.
QIcon Swatch(const QSize& size, const QColor& ground, const std::function<void(QPainter&)>& draw)
{
    QPixmap pixmap(size);
    pixmap.fill(ground);
    QPainter painter(&pixmap);
    draw(painter);
    painter.end();

    QPixmap twin = pixmap.scaled(size * 2, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    twin.setDevicePixelRatio(2);
    QIcon icon(pixmap);
    icon.addPixmap(twin);
    return icon;
}

struct Stroke {
    QPen pen;
    QLine line;
};

QIcon LineSwatch(const QSize& size, std::initializer_list<Stroke> strokes)
{
    return Swatch(size, Qt::transparent, [&strokes](QPainter& painter) {
        for (const Stroke& stroke : strokes) {
            painter.setPen(stroke.pen);
            painter.drawLine(stroke.line);
        }
    });
}

QPen Pen(int width, Qt::PenStyle style = Qt::SolidLine, const QColor& color = Qt::black)
{
    return {color, static_cast<qreal>(width), style};
}

QStandardItem* ColorItem(const char* text, const QColor& color)
{
    auto* item = new QStandardItem(text);
    item->setData(
        Swatch({15, 15}, color, [](QPainter& painter) { painter.drawRect(0, 0, 14, 14); }),
        Qt::DecorationRole);
    return item;
}

QStandardItem* LineItem(const QIcon& swatch)
{
    auto* item = new QStandardItem;
    item->setData(swatch, Qt::DecorationRole);
    return item;
}

} // namespace

void CActionUtils::SetupColorPickerComboBox(QComboBox* combo, bool withNone)
{
    QStandardItemModel& model = StartList(combo, {15, 15});
    if (withNone)
        AppendItem(model, new QStandardItem("(none)"));
    for (int row = firstColorRow; row <= lastColorRow; ++row) {
        const NamedColor& named = NamedColorAt(row);
        QStandardItem* item = ColorItem(named.name, named.color);
        item->setData(named.color, Qt::UserRole + 1);
        AppendItem(model, item);
    }
    AppendItem(model, ColorItem("Custom...", Qt::white));
    ShowList(combo, model, 17);
    combo->setMaxVisibleItems(4);
    // The colour that the user chooses is kept here; there is no such row without "(none)".
    combo->setItemData(customColorRow, QColor(255, 255, 255, 255), Qt::UserRole);
}

void CActionUtils::SetupLineStylePickerComboBox(QComboBox* combo)
{
    const QSize size(70, 14);
    QStandardItemModel& model = StartList(combo, size);
    for (const Qt::PenStyle style :
         {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine})
        AppendItem(model, LineItem(LineSwatch(size, {{Pen(2, style), {15, 7, 60, 7}}})));
    ShowList(combo, model, 15);
}

void CActionUtils::SetupUnderlineStylePickerComboBox(QComboBox* combo)
{
    const QSize size(70, 16);
    const QLine middle(5, 9, 65, 9);
    QStandardItemModel& model = StartList(combo, size);
    AppendItem(model, new QStandardItem("(none)"));
    AppendItem(model, LineItem(LineSwatch(size, {{Pen(1), middle}})));
    AppendItem(model,
               LineItem(LineSwatch(size, {{Pen(1), {5, 8, 65, 8}}, {Pen(1), {5, 10, 65, 10}}})));
    AppendItem(model, LineItem(LineSwatch(size, {{Pen(3), middle}})));
    for (const Qt::PenStyle style : {Qt::DotLine, Qt::DashLine, Qt::DashDotLine})
        AppendItem(model, LineItem(LineSwatch(size, {{Pen(1, style), middle}})));
    ShowList(combo, model, 19);
    combo->setMaxVisibleItems(8);
}

void CActionUtils::SetupLineWeightPickerComboBox(QComboBox* combo)
{
    struct Weight {
        const char* points;
        int grey; ///< thin lines are shown by their darkness
        int pixels;
    };
    constexpr Weight weights[] = {
        {"0.1", 200, 1}, {"0.25", 170, 1}, {"0.5", 140, 1}, {"0.75", 60, 1},
        {"1", 0, 1},     {"1.5", 0, 2},    {"2", 0, 2},     {"2.5", 0, 3},
        {"3", 0, 3},     {"4", 0, 4},      {"5", 0, 5},     {"6", 0, 6},
    };
    const QSize size(30, 14);
    QStandardItemModel& model = StartList(combo, size);
    for (const Weight& weight : weights) {
        const QPen pen =
            Pen(weight.pixels, Qt::SolidLine, QColor(weight.grey, weight.grey, weight.grey));
        QStandardItem* item = LineItem(LineSwatch(size, {{pen, {3, 7, 27, 7}}}));
        item->setText(weight.points);
        AppendItem(model, item);
    }
    ShowList(combo, model, 15);
}

QColor CActionUtils::GetColorPickerColor(int index)
{
    const bool named = index >= firstColorRow && index <= lastColorRow;
    return named ? NamedColorAt(index).color : QColor(Qt::black);
}

int CActionUtils::GetColorPickerIndex(QColor color)
{
    for (int row = firstColorRow; row <= lastColorRow; ++row) {
        if (NamedColorAt(row).color == color)
            return row;
    }
    return customColorRow;
}
