#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

class QLocalServer;
class QLocalSocket;
class QLockFile;

namespace vantora::desktop {

/// One window for a user's session: the first one opens what later ones are started with.
class SingleWindow : public QObject {
    Q_OBJECT

public:
    /// `folder` is where the windows of a session find each other, and `session` tells the sessions
    /// apart that share it. Without a folder that is the user's alone, each window is by itself.
    SingleWindow(const QString& folder, const QString& session);
    ~SingleWindow() override;

    /// Hands files, by their absolute paths, over to the window that is there already, which comes
    /// to the front; false when there is none, or it doesn't take them within some seconds.
    bool handOver(const QStringList& files);

signals:
    /// A later window was started with these.
    void filesGiven(const QStringList& files);

private:
    void listen();
    void take(QLocalSocket& later);

    QString path_; ///< empty where each window is by itself
    std::unique_ptr<QLockFile> first_;
    std::unique_ptr<QLocalServer> server_;
};

/// The folder that the system has for the user's session (XDG_RUNTIME_DIR), and what tells displays
/// apart; the folder is empty where there is none.
QString sessionFolder();
QString sessionName();

} // namespace vantora::desktop
