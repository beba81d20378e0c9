#include "VantoraApp/dialogs/FormFitting.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>

#include <climits>

namespace {

/// Gives the children of a widget, which isn't shown yet, the places that they will have when it is
/// narrower by `border` pixels.
void LayOut(QWidget* widget, int border = 0)
{
    if (widget->layout() == nullptr)
        return;
    widget->layout()->activate();
    widget->layout()->setGeometry(widget->contentsRect().adjusted(0, 0, -border, 0));
    for (QWidget* child : widget->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        LayOut(child);
}

/// The size in pixels at which a button with a bounded width shows its text whole.
int FittingPixelSize(const QPushButton& button)
{
    constexpr int border = 12;
    const int room = button.maximumWidth() - border;
    const int width = button.fontMetrics().size(Qt::TextShowMnemonic, button.text()).width();
    const int pixelSize = button.fontInfo().pixelSize();
    return width <= room ? pixelSize : qMax(1, pixelSize * room / width);
}

/// Shows the texts of buttons whole: by their width, or in a smaller font where the form bounds
/// that, the same for all of those.
void FitButtons(const QList<QPushButton*>& buttons)
{
    QList<QPushButton*> bounded;
    for (QPushButton* button : buttons) {
        if (button->maximumWidth() < QWIDGETSIZE_MAX)
            bounded << button;
        else // a least width that a form gives does away with the one that the text needs
            button->setMinimumWidth(qMax(button->minimumWidth(), button->sizeHint().width()));
    }
    int pixelSize = INT_MAX;
    for (const QPushButton* button : bounded)
        pixelSize = qMin(pixelSize, FittingPixelSize(*button));
    for (QPushButton* button : bounded) {
        QFont font = button->font();
        font.setPixelSize(pixelSize);
        if (pixelSize < button->fontInfo().pixelSize())
            button->setFont(font);
    }
}

/// Makes room for the title of a group above what is in the group. The style sheet lets the title
/// begin at the group's border.
void FitGroup(QGroupBox* group)
{
    constexpr int roomOfStyleSheet = 6;
    QMargins margins = group->layout()->contentsMargins();
    margins.setTop(qMax(margins.top(), group->fontMetrics().height() - roomOfStyleSheet));
    group->layout()->setContentsMargins(margins);
}

/// The desktop's colours where they go with the white of a form, and light ones where the desktop
/// is dark, so that no form is half dark.
QPalette OnWhite(const QPalette& desktop)
{
    if (desktop.color(QPalette::Base).lightness() >= desktop.color(QPalette::Text).lightness())
        return desktop;
    QPalette light(QColor(239, 239, 239), Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        light.setColor(QPalette::Disabled, role, QColor(150, 150, 150));
    light.setColor(QPalette::PlaceholderText, QColor(110, 110, 110));
    light.setColor(QPalette::Highlight, QColor(70, 90, 160));
    light.setColor(QPalette::HighlightedText, Qt::white);
    return light;
}

/// Writes on the white of a form in black, also where the desktop writes in white on black.
void WriteInBlack(QWidget* widget)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, Qt::black);
    widget->setPalette(palette);
}

void GrowToMinimum(QWidget* form, int border)
{
    form->layout()->activate();
    form->resize(form->size().expandedTo(form->layout()->totalMinimumSize() + QSize(border, 0)));
}

/// How high a label with several lines must be depends on its width, which the minimum of layouts
/// does not take into account.
void GrowToWrappedLabels(QWidget* form, int border)
{
    LayOut(form, border);
    QList<QLabel*> wrapped;
    for (QLabel* label : form->findChildren<QLabel*>()) {
        if (label->wordWrap() && label->minimumHeight() == 0)
            wrapped << label;
    }
    for (QLabel* label : wrapped)
        label->setMinimumHeight(label->heightForWidth(label->width()));
    GrowToMinimum(form, border);
    for (QLabel* label : wrapped)
        label->setMinimumHeight(0);
}

} // namespace

void FitFormToTexts(QWidget* form, int border)
{
    form->ensurePolished();
    const QPalette palette = OnWhite(QApplication::palette());
    for (QWidget* child : form->findChildren<QWidget*>())
        child->setPalette(palette); // which style sheets keep from being inherited
    for (QWidget* child : form->findChildren<QWidget*>()) {
        if (qobject_cast<QLabel*>(child) || qobject_cast<QGroupBox*>(child) ||
            qobject_cast<QRadioButton*>(child))
            WriteInBlack(child);
    }
    for (QGroupBox* group : form->findChildren<QGroupBox*>())
        FitGroup(group);
    FitButtons(form->findChildren<QPushButton*>());
    GrowToMinimum(form, border);
    GrowToWrappedLabels(form, border);
}
