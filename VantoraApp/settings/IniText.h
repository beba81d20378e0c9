#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The text of an INI file in the dialect of QSettings. Unlike QSettings this only takes the text
/// apart: values stay the texts that they are written as, so that nothing in a file of unknown
/// origin is decoded before somebody asks for it, and what isn't understood is kept as it is. The
/// values of a text that begins with a byte order mark are UTF-8, those of any other Latin-1.
class IniText {
public:
    explicit IniText(QByteArray bytes);

    /// The values by key, "group/key" in a group; more than one text where a list is written. Where
    /// a key stands twice the later value counts.
    const QMap<QString, QStringList>& values() const { return values_; }

    const QByteArray& bytes() const { return bytes_; }

    /// This text with other values, in the dialect (IniWriting.h), for these keys; the lines that
    /// they have already are dropped. The part of a key before its first slash is its group.
    QByteArray with(const QMap<QString, QByteArray>& values) const;

    /// This text without the lines of these keys.
    QByteArray without(const QStringList& keys) const;

private:
    struct Line {
        int start;
        int end; ///< past the line's end characters
        QString key;
    };

    void readLine(int start, int equals, int contentEnd, int end);
    void readSection(const QByteArray& header);

    QByteArray bytes_;
    int start_ = 0; ///< past a byte order mark
    QMap<QString, QStringList> values_;
    QList<Line> lines_;            ///< those that hold values
    QMap<QString, int> groupEnds_; ///< where another value can be added, by groups as in `group_`
    QString group_;                ///< of the line that is being read, with a slash at its end
};

/// The texts of a value: one, or those of a list, with quotes and escapes resolved.
QStringList ReadIniValue(const QByteArray& value, bool isUtf8 = false);
