#pragma once

#include "VantoraHost/desktop/sequence/Favourites.h"

#include <QtWidgets/QWidget>

class QToolButton;

namespace vantora::desktop {

/// Steps through the favourites of the chosen step's action, the newest first.
class FavouriteBar : public QWidget {
    Q_OBJECT

public:
    /// The actions outlive the bar.
    explicit FavouriteBar(const std::vector<InstalledAction>& actions, QWidget* parent = nullptr);

    /// The step whose favourites these are; null for none.
    void setStep(const ListedStep* step);

signals:
    /// The user wants the step to have the options of this one.
    void chosen(const vantora::desktop::Favourite& favourite);
    /// There is nothing in that direction.
    void noted(const QString& sentence);

private:
    std::vector<Favourite> favourites() const;
    void stepBy(int distance);
    void fill();

    const std::vector<InstalledAction>& actions_;
    const InstalledAction* action_ = nullptr;
    std::string current_; ///< the favourite that the step had last
    QToolButton* const list_;
    QToolButton* const newer_;
    QToolButton* const older_;
};

} // namespace vantora::desktop
