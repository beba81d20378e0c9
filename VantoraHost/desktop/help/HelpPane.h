#pragma once

#include <QtWidgets/QWidget>

class QLabel;
class QTextBrowser;

namespace vantora::desktop {

/// The help page of an action. While it lives it is where actions show theirs
/// (CActionUtils::SetTargetLabels).
class HelpPane : public QWidget {
    Q_OBJECT

public:
    explicit HelpPane(QWidget* parent = nullptr);
    ~HelpPane() override;

    /// Shows a page by the name of its file, under a title.
    void showPage(const QString& title, const QString& page);

private:
    QLabel* title_;
    QTextBrowser* page_;
};

} // namespace vantora::desktop
