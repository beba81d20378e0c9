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
    mColor = AddPicker(row, "With (none)", [](QComboBox* picker) {
        CActionUtils::SetupColorPickerComboBox(picker, true);
    });
    mColorWithoutNone = AddPicker(row, "Without (none)", [](QComboBox* picker) {
        CActionUtils::SetupColorPickerComboBox(picker, false);
    });
    mColorText = new QLabel;
    auto* column = new QVBoxLayout(group);
    column->addLayout(row);
    column->addStretch();
    column->addWidget(mColorText);
    for (QComboBox* picker : {mColor, mColorWithoutNone})
        connect(picker, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &GalleryWindow::ShowColor);
    mColor->setCurrentIndex(CActionUtils::GetColorPickerIndex(QColor(255, 127, 0)));
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
    mColorText->setText(described(mColor->currentIndex()) + "\n" +
                        described(mColorWithoutNone->currentIndex() + 1));
}

QGroupBox* GalleryWindow::CreateLines()
{
    auto* group = new QGroupBox("Lines");
    auto* row = new QHBoxLayout;
    mLineStyle = AddPicker(row, "Style", CActionUtils::SetupLineStylePickerComboBox);
    mUnderlineStyle = AddPicker(row, "Underline", CActionUtils::SetupUnderlineStylePickerComboBox);
    mLineWeight = AddPicker(row, "Weight", CActionUtils::SetupLineWeightPickerComboBox);
    mDashText = new QLabel;
    auto* column = new QVBoxLayout(group);
    column->addLayout(row);
    column->addStretch();
    column->addWidget(mDashText);
    for (QComboBox* picker : {mLineStyle, mLineWeight})
        connect(picker, qOverload<int>(&QComboBox::currentIndexChanged), this,
                &GalleryWindow::ShowDash);
    mLineStyle->setCurrentIndex(3);
    mUnderlineStyle->setCurrentIndex(2);
    mLineWeight->setCurrentIndex(6);
    return group;
}

void GalleryWindow::ShowDash()
{
    const double width = mLineWeight->currentText().toDouble();
    mDashText->setText("dash pattern of a border in this style and weight: " +
                       CActionUtils::GetBorderDash(mLineStyle->currentIndex(), width));
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
    mText = new QLineEdit("A text that is wrapped and becomes an icon");
    mText->setAccessibleName("Text");
    mTextIcon = new QLabel;
    mTextIcon->setFrameShape(QFrame::Box);
    mTextIcon->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    mTextHeight = new QLabel;
    auto* row = new QHBoxLayout;
    row->addWidget(mTextIcon);
    row->addWidget(mTextHeight, 1);
    auto* column = new QVBoxLayout(group);
    column->addWidget(mText);
    column->addLayout(row);
    connect(mText, &QLineEdit::textChanged, this, &GalleryWindow::ShowText);
    ShowText();
    return group;
}

void GalleryWindow::ShowText()
{
    QIcon icon;
    CActionUtils::GenerateTextItemIcon(textSize.width(), textSize.height(), mText->text(), &icon);
    mTextIcon->setPixmap(icon.pixmap(128, 128));
    mTextHeight->setText(QString("%1 pixels high when wrapped at %2 pixels")
                             .arg(CActionUtils::GetTextItemHeight(
                                 font(), mText->text().toHtmlEscaped(), textSize.width()))
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
