#pragma once

#include "VantoraHost/desktop/run/RunSettings.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace vantora::desktop {

/// What the window keeps until the next start: in the host's file for the places of dialogs.
class WindowState {
public:
    WindowState();

    QByteArray bytes(const QString& name) const;
    bool flag(const QString& name, bool otherwise) const;
    QStringList paths(const QString& name) const { return value(name).toStringList(); }
    RunSettings runSettings() const;

    void set(const QString& name, const QVariant& value) { values_.insert(keyOf(name), value); }
    void setRunSettings(const RunSettings& settings);

    /// Writes what was set; what the file refuses is lost.
    void write() const;

private:
    static QString keyOf(const QString& name);
    QVariant value(const QString& name) const { return values_.value(keyOf(name)); }

    QVariantMap values_;
};

} // namespace vantora::desktop
