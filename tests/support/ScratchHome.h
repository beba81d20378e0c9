#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <map>
#include <string>

/// An empty home of its own for a test: while it lives, the standard locations, the home folder
/// and the folder for temporary files lie inside it.
class ScratchHome {
public:
    ScratchHome()
    {
        for (const char* folder :
             {"home", "home/Desktop", "home/Documents", "data", "config", "temp"}) {
            QDir(scratch_.path()).mkdir(folder);
        }
        set("HOME", scratch_.filePath("home"));
        set("XDG_DATA_HOME", scratch_.filePath("data"));
        set("XDG_CONFIG_HOME", scratch_.filePath("config"));
        set("XDG_STATE_HOME", scratch_.filePath("home/.local/state"));
        set("TMPDIR", scratch_.filePath("temp"));
    }

    ~ScratchHome()
    {
        for (const auto& [name, value] : before_) {
            value.isNull() ? qunsetenv(name.c_str()) : qputenv(name.c_str(), value);
        }
    }

    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;

    QString home() const { return scratch_.filePath("home"); }
    QString data() const { return scratch_.filePath("data"); }
    QString documents() const { return scratch_.filePath("home/Documents"); }
    QString temporary() const { return scratch_.filePath("temp"); }

    /// Sets an environment variable until the end of this object.
    void set(const char* name, const QString& value)
    {
        before_.emplace(name, qgetenv(name));
        qputenv(name, QFile::encodeName(value));
    }

    /// Creates a file, an empty one unless there are bytes, in the place of one that is there.
    static void touch(const QString& path, const QByteArray& bytes = {})
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
    }

    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    /// The names of everything in a folder.
    static QStringList entriesOf(const QString& folder)
    {
        return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir scratch_;
    std::map<std::string, QByteArray> before_;
};
