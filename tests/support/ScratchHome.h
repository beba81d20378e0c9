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

    /// Creates an empty file.
    static void touch(const QString& path)
    {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
    }

private:
    QTemporaryDir scratch_;
    std::map<std::string, QByteArray> before_;
};
