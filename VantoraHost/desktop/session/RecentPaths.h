#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QMenu>

namespace vantora::desktop {

/// What was opened last, latest first: absolute paths of files and folders.
class RecentPaths {
public:
    static constexpr int most = 10;

    RecentPaths() = default;
    /// As it was stored; what makes no sense in it is left out.
    explicit RecentPaths(const QStringList& stored);

    /// What was opened together: several files are their folders.
    void add(const QStringList& opened);
    void clear() { paths_.clear(); }

    const QStringList& paths() const { return paths_; }

private:
    QStringList paths_;
};

/// A menu of them, the place of each before its name where names are the same.
class RecentMenu : public QMenu {
    Q_OBJECT

public:
    explicit RecentMenu(RecentPaths& paths, QWidget* parent = nullptr);

signals:
    void chosen(const QString& path);

private:
    void fill();

    RecentPaths& paths_;
};

} // namespace vantora::desktop
