#include "VantoraHost/desktop/choosing/ChoiceRow.h"

#include "VantoraHost/core/PaperFormats.h"

#include "ui_ChoiceRow.h"

#include <QtCore/QSignalBlocker>

#include <algorithm>

namespace vantora::desktop {

namespace {

// As far as sliders go; fields beside them go on.
constexpr int longestSlide = 50;

// No document has more pages.
constexpr int mostPages = 1'000'000;

void couple(QSlider& slider, QSpinBox& spin)
{
    QObject::connect(&slider, &QSlider::valueChanged, &spin, [&spin, &slider](int value) {
        if (slider.value() != std::min(spin.value(), slider.maximum())) {
            spin.setValue(value);
        }
    });
    QObject::connect(&spin, QOverload<int>::of(&QSpinBox::valueChanged), &slider,
                     [&slider](int value) {
                         const QSignalBlocker quiet(slider);
                         slider.setValue(value);
                     });
}

} // namespace

ChoiceRow::ChoiceRow(bool isException, QWidget* parent)
    : QWidget(parent), isException_(isException), words_(allChoiceWords()),
      form_(std::make_unique<Ui::ChoiceRow>())
{
    form_->setupUi(this);
    form_->kindCombo->addItem(tr("Choose what pages…"));
    for (const ChoiceWords& one : words_) {
        form_->kindCombo->addItem(one.words);
    }
    form_->kindCombo->setMaxVisibleItems(form_->kindCombo->count());
    for (const PaperFormat& format : paperFormats) {
        form_->sizeCombo->addItem(QLatin1String(format.name));
    }
    form_->sizeCombo->setCurrentText(QStringLiteral("A4"));
    form_->jointLabel->setFixedWidth(fontMetrics().averageCharWidth() * 7);
    for (QSlider* slider : {form_->countSlider, form_->startSlider}) {
        slider->setRange(1, longestSlide);
        slider->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    }
    form_->countSpin->setRange(1, mostPages);
    form_->startSpin->setRange(1, 1);
    couple(*form_->countSlider, *form_->countSpin);
    couple(*form_->startSlider, *form_->startSpin);
    connect(form_->kindCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ChoiceRow::chooseKind);
    connect(form_->countSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &ChoiceRow::follow);
    connect(form_->startSpin, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &ChoiceRow::follow);
    connect(form_->textEdit, &QLineEdit::textChanged, this, &ChoiceRow::follow);
    connect(form_->sizeCombo, &QComboBox::editTextChanged, this, &ChoiceRow::follow);
    connect(form_->strictCheck, &QCheckBox::toggled, this, &ChoiceRow::follow);
    connect(form_->removeButton, &QToolButton::clicked, this, &ChoiceRow::removeAsked);
    chooseKind();
}

ChoiceRow::~ChoiceRow() = default;

void ChoiceRow::setJoint(const QString& text)
{
    form_->jointLabel->setText(text);
    form_->jointLabel->setVisible(!text.isNull());
}

void ChoiceRow::focusKind()
{
    form_->kindCombo->setFocus(Qt::OtherFocusReason);
}

std::vector<QWidget*> ChoiceRow::tabStops() const
{
    return {form_->kindCombo,   form_->textEdit,    form_->sizeCombo,
            form_->countSpin,   form_->countSlider, form_->startSpin,
            form_->startSlider, form_->strictCheck, form_->removeButton};
}

ChoiceField ChoiceRow::field() const
{
    const int kind = form_->kindCombo->currentIndex() - 1;
    return kind < 0 ? ChoiceField::None : words_[static_cast<std::size_t>(kind)].field;
}

void ChoiceRow::chooseKind()
{
    const ChoiceField now = field();
    const bool isStep = now == ChoiceField::Step;
    const bool isNumber = isStep || now == ChoiceField::Count;
    const bool isText = now == ChoiceField::Range || now == ChoiceField::Label ||
                        now == ChoiceField::Title || now == ChoiceField::Words;
    const int kind = form_->kindCombo->currentIndex() - 1;
    const QString hint = kind < 0 ? QString() : words_[static_cast<std::size_t>(kind)].hint;
    form_->textEdit->setVisible(isText);
    form_->textEdit->setPlaceholderText(hint);
    form_->textEdit->setToolTip(hint);
    form_->sizeCombo->setVisible(now == ChoiceField::Size);
    form_->sizeCombo->setToolTip(hint);
    form_->countSpin->setVisible(isNumber);
    form_->countSlider->setVisible(isNumber);
    form_->startLabel->setVisible(isStep);
    form_->startSpin->setVisible(isStep);
    form_->startSlider->setVisible(isStep);
    form_->strictCheck->setVisible(now == ChoiceField::Strictness);
    form_->fillLabel->setVisible(!isText && !isNumber);
    if (isStep && form_->countSpin->value() < 2) {
        form_->countSpin->setValue(2); // every one would be no choice
    }
    follow();
}

QString ChoiceRow::argument() const
{
    switch (field()) {
    case ChoiceField::None:
        return {};
    case ChoiceField::Count:
        return QString::number(form_->countSpin->value());
    case ChoiceField::Step:
        return QStringLiteral("%1+%2")
            .arg(form_->countSpin->value())
            .arg(form_->startSpin->value());
    case ChoiceField::Size:
        return form_->sizeCombo->currentText().trimmed();
    case ChoiceField::Strictness:
        return form_->strictCheck->isChecked() ? QStringLiteral("strict") : QString();
    default:
        return form_->textEdit->text();
    }
}

ChoiceDraft ChoiceRow::draft() const
{
    const int kind = form_->kindCombo->currentIndex() - 1;
    if (kind < 0) {
        return {std::nullopt, {}, isException_};
    }
    return {words_[static_cast<std::size_t>(kind)].kind, argument(), isException_};
}

void ChoiceRow::follow()
{
    const int step = form_->countSpin->value();
    form_->startSpin->setMaximum(step);
    form_->startSlider->setMaximum(std::min(step, longestSlide));
    const QString fault = draft().fault();
    form_->faultLabel->setText(fault);
    form_->faultLabel->setVisible(!fault.isEmpty());
    emit changed();
}

} // namespace vantora::desktop
