#pragma once

#include "VantoraHost/desktop/choosing/Chooser.h"

#include <QtWidgets/QWidget>

#include <memory>
#include <vector>

class QListWidgetItem;

namespace Ui {
class ChoosePane;
}

namespace vantora::desktop {

class ChoiceRow;

/// Where people say what pages go by what they are: choices, any of which a page has to be, and
/// exceptions. What they name is looked for while they are made.
class ChoosePane : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the pane.
    ChoosePane(Chooser& chooser, const DocumentList& list, QWidget* parent = nullptr);
    ~ChoosePane() override;

    /// Leads the keyboard to the last choice.
    void focusLastRow();

signals:
    void reviewAsked();
    void closeAsked();
    void documentAsked(vantora::desktop::DocumentId id);

private:
    ChoiceRow* addRow(bool isException);
    void removeRow(ChoiceRow* row);
    void followRows();
    void showProgress();
    void showRemarks();
    QString statusText() const;

    Chooser& chooser_;
    const DocumentList& list_;
    const std::unique_ptr<Ui::ChoosePane> form_;
    std::vector<ChoiceRow*> rows_; ///< in their order; exceptions last
};

} // namespace vantora::desktop
