#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// The text of an INI file in the dialect of QSettings. Unlike QSettings this only takes the text
/// apart: values stay the texts that they are written as, so that nothing in a file of unknown
/// origin is decoded before somebody asks for it, and what isn't understood is kept as it is.
class IniText {
public:
    explicit IniText(QByteArray bytes);

    /// The values by key, "group/key" in a group; more than one text where a list is written. Where
    /// a key stands twice the later value counts.
    const QMap<QString, QStringList>& values() const { return mValues; }

    const QByteArray& bytes() const { return mBytes; }

    /// This text with other values for keys outside any group. `lines` holds complete lines of the
    /// dialect, one for each of the `keys`; lines of these keys that are there already are dropped.
    QByteArray withLines(const QStringList& keys, const QByteArray& lines) const;

private:
    struct Line {
        int start;
        int end; ///< past the line's end characters
        QString key;
    };

    void readLine(int start, int equals, int contentEnd, int end);
    void readSection(const QByteArray& header);

    QByteArray mBytes;
    QMap<QString, QStringList> mValues;
    QList<Line> mGeneralLines; ///< the values outside any group
    int mGeneralEnd = -1;      ///< where another one can be added; -1 when there is no place yet
    QString mGroup;            ///< of the line that is being read, with a slash at its end
};

/// The texts of a value: one, or those of a list, with quotes and escapes resolved.
QStringList ReadIniValue(const QByteArray& value);
