#pragma once

#include <QtWidgets/QWidget>

#include <memory>

class QAction;

namespace Ui {
class EmptyPage;
}

namespace vantora::desktop {

/// What an empty window shows: what to do.
class EmptyPage : public QWidget {
    Q_OBJECT

public:
    EmptyPage(QAction& addFiles, QAction& addFolder, QWidget* parent = nullptr);
    ~EmptyPage() override;

private:
    const std::unique_ptr<Ui::EmptyPage> form_;
};

} // namespace vantora::desktop
