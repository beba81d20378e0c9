#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

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
    for (const auto* group : window.findChildren<QGroupBox*>())
        check(*group, group->width() >= group->minimumSizeHint().width());
    return cut;
}
