#include "examples/gallery/GalleryWindow.h"

#include "VantoraApp/CActionUtils.h"

#include <QtGui/QIcon>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int pickerWidth = 150;
constexpr QSize textSize(200, 100);

/// The list of a picker as it looks when it is open.
QTableView* ListOf(const QComboBox& picker)
{
    const auto* shown = qobject_cast<QTableView*>(picker.view());
    auto* list = new QTableView;
    list->setModel(picker.model());
    list->setFrameShape(QFrame::NoFrame);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->horizontalHeader()->hide();
    list->verticalHeader()->hide();
    list->setIconSize(shown->iconSize());
    list->setPalette(shown->palette());
    list->setStyleSheet(shown->styleSheet());
    list->verticalHeader()->setMinimumSectionSize(shown->rowHeight(0));
    list->verticalHeader()->setDefaultSectionSize(shown->rowHeight(0));
    list->setColumnWidth(0, shown->columnWidth(0));
    list->setFixedSize(shown->minimumSize());
    return list;
}

template <class Setup>
QComboBox* AddPicker(QHBoxLayout* row, const QString& title, Setup setup)
{
    auto* picker = new QComboBox;
    picker->setFixedWidth(pickerWidth);
    picker->setAccessibleName(title);
    setup(picker);
    auto* column = new QVBoxLayout;
    column->addWidget(new QLabel(title));
    column->addWidget(picker);
    column->addWidget(ListOf(*picker));
    column->addStretch();
    row->addLayout(column);
    return picker;
}

} // namespace

GalleryWindow::GalleryWindow()
{
    setWindowTitle("Widgets for options dialogs");
    setWindowIcon(QIcon(":/Vantora/Resources/Icons/App_icon_256x256.png"));
    auto* pickers = new QHBoxLayout;
    pickers->addWidget(CreateColors());
    pickers->addWidget(CreateLines());
    auto* below = new QHBoxLayout;
    below->addWidget(CreateFonts());
    below->addWidget(CreateTextIcon());
    auto* left = new QVBoxLayout;
    left->addLayout(pickers);
    left->addLayout(below);
    left->addStretch();
    auto* all = new QHBoxLayout(this);
    all->addLayout(left);
    all->addWidget(CreateHelp(), 1);
}

GalleryWindow::~GalleryWindow()
{
    CActionUtils::SetTargetLabels(nullptr, nullptr);
}

QGroupBox* GalleryWindow::CreateColors()
{
    auto* group = new QGroupBox("Colours");
    auto* row = new QHBoxLayout;
    color_ = AddPicker(row, "With (none)", [](QComboBox* picker) {
        CActionUtils::SetupColorPickerComboBox(picker, true);
    });
    colorWithoutNone_ = AddPicker(row, "Without (none)", [](QComboBox* picker) {
        CActionUtils::SetupColorPickerComboBox(picker, false);
    });
    colorText_ = new QLabel;
    auto* column = new QVBoxLayout(group);
    column->addLayout(row);
    column->addStretch();
    column->addWidget(colorText_);
    for (QComboBox* picker : {color_, colorWithoutNone_})
        connect(picker, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &GalleryWindow::ShowColor);
    color_->setCurrentIndex(CActionUtils::GetColorPickerIndex(QColor(255, 127, 0)));
    ShowColor();
    return group;
}

void GalleryWindow::ShowColor()
{
    const auto described = [](int row) {
        const QColor color = CActionUtils::GetColorPickerColor(row);
        return QString("chosen: %1, row %2 in the list with (none)")
            .arg(color.name())
            .arg(CActionUtils::GetColorPickerIndex(color));
    };
    colorText_->setText(described(color_->currentIndex()) + "\n" +
                        described(colorWithoutNone_->currentIndex() + 1));
}

QGroupBox* GalleryWindow::CreateLines()
{
    auto* group = new QGroupBox("Lines");
    auto* row = new QHBoxLayout;
    lineStyle_ = AddPicker(row, "Style", CActionUtils::SetupLineStylePickerComboBox);
    underlineStyle_ = AddPicker(row, "Underline", CActionUtils::SetupUnderlineStylePickerComboBox);
    lineWeight_ = AddPicker(row, "Weight", CActionUtils::SetupLineWeightPickerComboBox);
    dashText_ = new QLabel;
    auto* column = new QVBoxLayout(group);
    column->addLayout(row);
    column->addStretch();
    column->addWidget(dashText_);
    for (QComboBox* picker : {lineStyle_, lineWeight_})
        connect(picker, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &GalleryWindow::ShowDash);
    lineStyle_->setCurrentIndex(3);
    underlineStyle_->setCurrentIndex(2);
    lineWeight_->setCurrentIndex(6);
    return group;
}

void GalleryWindow::ShowDash()
{
    const double width = lineWeight_->currentText().toDouble();
    dashText_->setText("dash pattern of a border in this style and weight: " +
                       CActionUtils::GetBorderDash(lineStyle_->currentIndex(), width));
}

QGroupBox* GalleryWindow::CreateFonts()
{
    auto* group = new QGroupBox("Fonts");
    auto* form = new QFormLayout(group);
    auto* standard = new QComboBox;
    CActionUtils::SetupStandardFontsComboBox(standard);
    auto* installed = new QComboBox;
    CActionUtils::SetupSystemFontsComboBox(installed);
    form->addRow("Standard:", standard);
    form->addRow("Installed:", installed);
    form->addRow(new QLabel(QString("%1 families installed").arg(installed->count())));
    return group;
}

QGroupBox* GalleryWindow::CreateTextIcon()
{
    auto* group = new QGroupBox("Text icon");
    text_ = new QLineEdit("A text that is wrapped and becomes an icon");
    text_->setAccessibleName("Text");
    textIcon_ = new QLabel;
    textIcon_->setFrameShape(QFrame::Box);
    textIcon_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    textHeight_ = new QLabel;
    auto* row = new QHBoxLayout;
    row->addWidget(textIcon_);
    row->addWidget(textHeight_, 1);
    auto* column = new QVBoxLayout(group);
    column->addWidget(text_);
    column->addLayout(row);
    connect(text_, &QLineEdit::textChanged, this, &GalleryWindow::ShowText);
    ShowText();
    return group;
}

void GalleryWindow::ShowText()
{
    QIcon icon;
    CActionUtils::GenerateTextItemIcon(textSize.width(), textSize.height(), text_->text(), &icon);
    textIcon_->setPixmap(icon.pixmap(128, 128));
    textHeight_->setText(QString("%1 pixels high when wrapped at %2 pixels")
                             .arg(CActionUtils::GetTextItemHeight(
                                 font(), text_->text().toHtmlEscaped(), textSize.width()))
                             .arg(textSize.width()));
}

QGroupBox* GalleryWindow::CreateHelp()
{
    auto* group = new QGroupBox("Help");
    auto* section = new QLabel;
    auto* page = new QTextBrowser;
    page->setMinimumWidth(380);
    CActionUtils::SetTargetLabels(section, page);

    auto* tool =
        new QPushButton(CActionUtils::GetIconForTool("Action_DeletePages.png"), "Delete Pages");
    const auto showTool = [] {
        CActionUtils::SetCurrentSection("Pages");
        CActionUtils::SetHelp("Action_DeletePages.html");
    };
    connect(tool, &QPushButton::clicked, this, showTool);
    auto* text = new QPushButton("A text");
    connect(text, &QPushButton::clicked, this, [] {
        CActionUtils::SetCurrentSection("A text");
        CActionUtils::SetHelpHtml("<p>Any <b>rich</b> text, or a plain one.</p>");
    });
    auto* missing = new QPushButton("A missing page");
    connect(missing, &QPushButton::clicked, this, [] {
        CActionUtils::SetCurrentSection("A missing page");
        CActionUtils::SetHelp("missing.html");
    });

    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {tool, text, missing})
        buttons->addWidget(button);
    buttons->addStretch();
    auto* column = new QVBoxLayout(group);
    column->addLayout(buttons);
    column->addWidget(section);
    column->addWidget(page);
    showTool();
    return group;
}
