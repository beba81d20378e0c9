#pragma once

#include <QtCore/QStringList>
#include <QtGui/QScreen>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

/// Calls `look` in each font in which windows must show their texts: the usual one and a large one,
/// which with many dots per inch would be too large for the screen of the tests.
template <class Look>
void inShownFonts(Look look)
{
    const QFont usual = QApplication::font();
    const bool isDense = QGuiApplication::primaryScreen()->logicalDotsPerInch() > 100;
    for (const int points :
         isDense ? QList<int>{usual.pointSize()} : QList<int>{usual.pointSize(), 20}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        look();
    }
    QApplication::setFont(usual);
}

/// The labels and buttons of a shown window that have not room for their texts, or lie outside of
/// what holds them.
inline QStringList cutTexts(const QWidget& window)
{
    QStringList cut;
    const auto check = [&cut](const QWidget& widget, bool fits) {
        const bool isInside = widget.parentWidget()->rect().contains(widget.geometry());
        if (widget.isVisible() && !(fits && isInside))
            cut << QString("%1 (%2 x %3 at %4, %5)")
                       .arg(widget.objectName())
                       .arg(widget.width())
                       .arg(widget.height())
                       .arg(widget.x())
                       .arg(widget.y());
    };
    for (const auto* label : window.findChildren<QLabel*>()) {
        const int height = label->wordWrap() ? label->heightForWidth(label->width())
                                             : label->minimumSizeHint().height();
        check(*label, label->text().isEmpty() ||
                          (label->height() >= height &&
                           (label->wordWrap() || label->width() >= label->sizeHint().width())));
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        const bool showsText = button->icon().isNull();
        check(*button, !showsText || (button->width() >= text.width() + 6 &&
                                      button->height() >= text.height()));
    }
    for (const auto* edit : window.findChildren<QLineEdit*>())
        check(*edit, edit->height() >= edit->fontMetrics().height());
    for (const auto* group : window.findChildren<QGroupBox*>()) {
        // The style sheet lets the title begin four pixels from the top.
        const int titleEnd = 4 + group->fontMetrics().height();
        bool isBelow = true;
        for (const auto* child :
             group->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
            isBelow = isBelow && child->y() >= titleEnd;
        check(*group, isBelow && group->width() >= group->minimumSizeHint().width());
    }
    return cut;
}
