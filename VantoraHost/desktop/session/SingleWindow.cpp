#include "VantoraHost/desktop/session/SingleWindow.h"

#include "VantoraHost/core/FileIdentity.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QLockFile>
#include <QtCore/QThread>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

namespace vantora::desktop {

namespace {

// What a later window says: this, and each of its files, all ended by a zero byte, and one more.
const QByteArray greeting = QByteArrayLiteral("vantora-desktop 1");
const QByteArray taken = QByteArrayLiteral("taken");

constexpr int longestMessage = 8 * 1024 * 1024; // a command line is shorter
constexpr int patience = 5000;                  // in milliseconds; then it opens a window itself
constexpr int betweenTries = 50;

QByteArray messageOf(const QStringList& files)
{
    QByteArray message = greeting + '\0';
    for (const QString& file : files) {
        message += QFile::encodeName(file) + '\0';
    }
    return message + '\0';
}

bool isWhole(const QByteArray& message)
{
    return message.endsWith(QByteArray(2, '\0'));
}

/// None of what is no message.
QStringList filesOf(const QByteArray& message)
{
    QList<QByteArray> parts = message.split('\0');
    QStringList files;
    if (parts.takeFirst() == greeting) {
        for (const QByteArray& part : parts) {
            if (part.startsWith('/')) {
                files << QFile::decodeName(part);
            }
        }
    }
    return files;
}

} // namespace

SingleWindow::SingleWindow(const QString& folder, const QString& session)
{
    if (!folder.isEmpty() && isPrivateFolder(QFile::encodeName(folder).toStdString())) {
        const QByteArray name =
            QCryptographicHash::hash(session.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
        path_ = folder + "/vantora-desktop-" + QString::fromLatin1(name);
    }
}

SingleWindow::~SingleWindow() = default;

bool SingleWindow::handOver(const QStringList& files)
{
    if (path_.isEmpty()) {
        return false;
    }
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < patience) {
        auto lock = std::make_unique<QLockFile>(path_ + ".lock");
        lock->setStaleLockTime(0); // it is held for as long as the window is there
        if (lock->tryLock(0)) {
            first_ = std::move(lock);
            listen();
            return false;
        }
        if (lock->error() != QLockFile::LockFailedError) {
            return false;
        }
        QLocalSocket socket;
        socket.connectToServer(path_);
        // The first window may have got no further than to its lock.
        if (!socket.waitForConnected(patience)) {
            QThread::msleep(betweenTries);
            continue;
        }
        socket.write(messageOf(files));
        while (!socket.bytesAvailable() && socket.waitForReadyRead(patience)) {
        }
        return socket.readAll() == taken;
    }
    return false;
}

void SingleWindow::listen()
{
    server_ = std::make_unique<QLocalServer>();
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(path_); // of a window that crashed
    connect(server_.get(), &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* later = server_->nextPendingConnection()) {
            connect(later, &QLocalSocket::disconnected, later, &QObject::deleteLater);
            connect(later, &QLocalSocket::readyRead, this, [this, later] { take(*later); });
        }
    });
    if (!server_->listen(path_)) {
        first_.reset(); // later ones are not to wait for it
    }
}

void SingleWindow::take(QLocalSocket& later)
{
    if (later.bytesAvailable() > longestMessage) {
        later.abort();
        return;
    }
    const QByteArray message = later.peek(longestMessage);
    if (!isWhole(message)) {
        return;
    }
    later.readAll();
    if (!message.startsWith(greeting + '\0')) {
        later.abort();
        return;
    }
    later.write(taken);
    later.disconnectFromServer();
    emit filesGiven(filesOf(message));
}

QString sessionFolder()
{
    return QFile::decodeName(qgetenv("XDG_RUNTIME_DIR"));
}

QString sessionName()
{
    const char* const variables[] = {"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"};
    for (const char* variable : variables) {
        if (qEnvironmentVariableIsSet(variable)) {
            return QString::fromLatin1(variable) + '=' + qEnvironmentVariable(variable);
        }
    }
    return {};
}

} // namespace vantora::desktop
