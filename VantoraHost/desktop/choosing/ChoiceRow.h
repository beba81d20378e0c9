#pragma once

#include "VantoraHost/desktop/choosing/ChoiceTexts.h"

#include <QtWidgets/QWidget>

#include <memory>
#include <vector>

namespace Ui {
class ChoiceRow;
}

namespace vantora::desktop {

/// One choice of pages: its kind, a field for what the kind needs, and what is wrong with that.
class ChoiceRow : public QWidget {
    Q_OBJECT

public:
    explicit ChoiceRow(bool isException, QWidget* parent = nullptr);
    ~ChoiceRow() override;

    ChoiceDraft draft() const;

    /// Says how the row goes on what stands above it: "or", "but not". An empty text keeps the room
    /// for one, a null one doesn't.
    void setJoint(const QString& text);

    /// Leads the keyboard to the kind.
    void focusKind();

    /// What the keyboard goes through, in this order.
    std::vector<QWidget*> tabStops() const;

signals:
    void changed();
    void removeAsked();

private:
    ChoiceField field() const;
    void chooseKind();
    void follow();
    QString argument() const;

    const bool isException_;
    const std::vector<ChoiceWords> words_;
    const std::unique_ptr<Ui::ChoiceRow> form_;
};

} // namespace vantora::desktop
