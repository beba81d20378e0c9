#pragma once

#include "VantoraHost/desktop/run/ResultList.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QWidget>

#include <memory>

namespace Ui {
class ResultsPane;
}

namespace vantora::desktop {

/// The results of the last run, and what can be done with them.
class ResultsPane : public QWidget {
    Q_OBJECT

public:
    /// The list outlives the pane.
    explicit ResultsPane(ResultList& list, QWidget* parent = nullptr);
    ~ResultsPane() override;

    /// Says how a run ended.
    void showSummary(const RunSummary& summary, std::size_t total, bool cancelled,
                     const QString& error);

    /// Leads the keyboard to the results.
    void focusList();

signals:
    void retryAsked();
    void restAsked();
    void commandAsked();
    void closeAsked();

private:
    QString selectedOutput() const;
    void updateButtons();

    ResultList& list_;
    QSortFilterProxyModel sorted_;
    const std::unique_ptr<Ui::ResultsPane> form_;
};

/// How a run ended, in a sentence or two.
QString summaryText(const RunSummary& summary, std::size_t total, bool cancelled,
                    const QString& error);

} // namespace vantora::desktop
